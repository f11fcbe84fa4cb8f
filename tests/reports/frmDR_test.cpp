#include "reports/frmDR.h"

#include <gmock/gmock.h>

#include "account/frmLogin.h"
#include "tests/support/addin_test.h"

namespace quorvel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

Alert Information(TextView message) {
  return {Text(message), kInformation, u"SMS"};
}

Alert Warning(TextView message) {
  return {Text(message), kWarning, u"SMS"};
}

Alert Critical(TextView message) {
  return {Text(message), kCritical, u"SMS"};
}

class FrmDrTest : public AddInTest {
 protected:
  void SetUp() override {
    LogIn();
    SettingsStore(settings_).Write(kModesSetting, u"L-Sheet,C-Web-Campaign");
  }

  // Opens the form by its command, names the new sheet "Report", plays `user` and closes the form.
  void WithForm(const std::function<void(frmDR&)>& user) {
    forms_.On<frmDR>([&](frmDR& form) {
      form.txtSheetName.UserType(u"Report");
      user(form);
      form.cmdCancel.UserPress();
    });
    connect_.DeliveryReport();
  }

  // Presses cmdGet; the gateway answers `reply`.
  ReportOutcome Get(frmDR& form, std::string_view reply) {
    internet_.Answer(reply);
    form.cmdGet.UserPress();
    return form.outcome();
  }
  ReportOutcome Get(std::string_view reply) {
    ReportOutcome outcome{};
    WithForm([&](frmDR& form) { outcome = Get(form, reply); });
    return outcome;
  }

  MemorySheet* Report() { return application_.workbook()->Find(u"Report"); }
  Text Cell(TextView column, std::int32_t row) {
    return Report() == nullptr ? u"no sheet" : Report()->CellText({column, row});
  }
};

TEST_F(FrmDrTest, OpensOnTodayAndAllModes) {
  WithForm([](frmDR& form) {
    EXPECT_THAT(form.cmbMode.items(), ElementsAre(u"Sheet", u"Web-Campaign", u"ALL"));
    EXPECT_EQ(form.cmbMode.text(), u"ALL");
    EXPECT_EQ(form.cmbFromDateYear.items().front(), u"2003");
    for (const ComboBox* year : {&form.cmbFromDateYear, &form.cmbToDateYear}) {
      EXPECT_EQ(year->text(), u"2024");
      EXPECT_EQ(year->list_count(), 22);
    }
    for (const ComboBox* month : {&form.cmbFromDateMonth, &form.cmbTodateMonth}) {
      EXPECT_EQ(month->text(), u"March");
      EXPECT_EQ(month->list_count(), 12);
    }
    for (const ComboBox* day : {&form.cmbFromDateDay, &form.cmbToDateDay}) {
      EXPECT_EQ(day->text(), u"1");
      EXPECT_EQ(day->list_count(), 31);
    }
  });
}

TEST_F(FrmDrTest, OffersTheDaysOfTheChosenMonth) {
  WithForm([](frmDR& form) {
    form.cmbFromDateDay.UserSelect(30);
    form.cmbFromDateMonth.UserSelect(1);
    EXPECT_EQ(form.cmbFromDateDay.list_count(), 29);
    EXPECT_EQ(form.cmbFromDateDay.text(), u"29");
    form.cmbFromDateYear.UserSelect(0);
    EXPECT_EQ(form.cmbFromDateDay.list_count(), 28);
    form.cmbTodateMonth.UserSelect(3);
    EXPECT_EQ(form.cmbToDateDay.list_count(), 30);
    EXPECT_EQ(form.cmbToDateDay.text(), u"1");
    form.cmbTodateMonth.UserSelect(1);
    form.cmbToDateYear.UserSelect(0);
    EXPECT_EQ(form.cmbToDateDay.list_count(), 28);
  });
}

TEST_F(FrmDrTest, PostsTheCredentialsTheDatesAndTheMode) {
  WithForm([this](frmDR& form) {
    Get(form, "0");
    form.cmbMode.UserSelect(1);
    form.cmbFromDateMonth.UserSelect(0);
    form.cmbFromDateDay.UserSelect(11);
    form.cmbToDateDay.UserSelect(8);
    Get(form, "0");
  });
  const auto requests = NewRequests();
  ASSERT_EQ(requests.size(), 2U);
  EXPECT_EQ(requests[0].object, "Merrow/Get_DR.asp");
  // The key of that noon is 6, and the first random place in three characters is the third.
  EXPECT_EQ(requests[0].body, "user=joe@x&passwd=xG%06%7D%03&FromDate=20240301&ToDate=20240301&TOD=ALL");
  EXPECT_THAT(requests[1].body, testing::EndsWith("&FromDate=20240112&ToDate=20240309&TOD=C"));
}

TEST_F(FrmDrTest, WritesTheRecordsUnderABoldHeading) {
  EXPECT_EQ(Get("<SMS>No-Day,11-2024~03~01,22-a\x80"
                "b\x01"
                "c\r\nd</SMS>"),
            ReportOutcome::kWritten);
  EXPECT_THAT(NewAlerts(), IsEmpty());
  ASSERT_NE(Report(), nullptr);
  EXPECT_EQ(sheet().name(), u"Report");
  EXPECT_EQ(Cell(u"A", 1) + u"|" + Cell(u"B", 1), u"No|Day");
  EXPECT_EQ(Cell(u"A", 2) + u"|" + Cell(u"B", 2), u"11|2024-03-01");
  EXPECT_EQ(Cell(u"A", 3) + u"|" + Cell(u"B", 3), u"22|a,b,c d");
  EXPECT_EQ(Report()->UsedRows(), 3);
  EXPECT_TRUE(Report()->Bold({u"A", 1}) && Report()->Bold({u"B", 1}));
  EXPECT_FALSE(Report()->Bold({u"A", 2}) || Report()->Bold({u"C", 1}));
  EXPECT_EQ(forms_.Open<frmDisplay>(), nullptr);
}

TEST_F(FrmDrTest, GoesOnBehindColumnZ) {
  std::string record = "1";
  for (int i = 2; i <= 28; ++i) record += "-" + std::to_string(i);
  EXPECT_EQ(Get("<SMS>" + record + "," + record + "</SMS>"), ReportOutcome::kWritten);
  EXPECT_EQ(Cell(u"Z", 1) + Cell(u"AA", 1), u"2627");
  EXPECT_EQ(Cell(u"AB", 2), u"28");
}

TEST_F(FrmDrTest, ReportsEveryAnswerThatIsNoReport) {
  struct Case {
    std::string_view reply;
    ReportOutcome outcome;
    Alert alert;
  };
  const Case cases[] = {
      {"", ReportOutcome::kNotFetched,
       Critical(u"No Response!!!\r\nPlease Check Your Proxy Settings & Internet Connection!!!")},
      {"002", ReportOutcome::kRefused, Critical(u"Invalid User Name")},
      {"003", ReportOutcome::kRefused, Critical(u"Invalid Password")},
      {"005", ReportOutcome::kRefused, Critical(u"Invalid Parameters")},
      {"0110", ReportOutcome::kRefused, Critical(u"Your account has been blocked")},
      {"<ERROR>", ReportOutcome::kRefused, Critical(u"Error occured while retrieving delivery report")},
      {"0", ReportOutcome::kNone, Information(u"No Records Found")},
      {"<SMS>0</SMS>", ReportOutcome::kNone, Information(u"No Records Found")},
      {"<SMS></SMS>", ReportOutcome::kNone, Information(u"No Report Found For The Specified Date!!!")},
  };
  for (const Case& expected : cases) {
    SCOPED_TRACE(expected.reply);
    EXPECT_EQ(Get(expected.reply), expected.outcome);
    EXPECT_THAT(NewAlerts(), ElementsAre(expected.alert));
    EXPECT_EQ(Report(), nullptr);
    EXPECT_EQ(forms_.Open<frmDisplay>(), nullptr);
  }
}

TEST_F(FrmDrTest, SaysWhenTheAnswerBrokeOff) {
  EXPECT_EQ(Get("<SMS>No-State,11-DEL"), ReportOutcome::kNotFetched);
  EXPECT_THAT(
      NewAlerts(),
      ElementsAre(Warning(u"The connection broke off. The report is incomplete. Please get it again.")));
  EXPECT_EQ(Cell(u"B", 2), u"DEL");
}

TEST_F(FrmDrTest, ChecksTheFieldsInOrder) {
  WithForm([this](frmDR& form) {
    form.txtSheetName.UserType(u"");
    form.cmbToDateYear.UserSelect(0);
    application_.CloseWorkbook();
    form.cmdGet.UserPress();
    application_.OpenWorkbook(u"Data");
    form.cmdGet.UserPress();
    form.txtSheetName.UserType(u"dATA");
    form.cmdGet.UserPress();
    form.txtSheetName.UserType(u"Data 2");
    form.cmdGet.UserPress();
  });
  EXPECT_THAT(NewAlerts(),
              ElementsAre(Information(u"Work book does not exit. Please check"),
                          Information(u"Sheet name should not be empty"),
                          Information(u"Sheet name(dATA) already exits.\r\nPlease choose some other"),
                          Information(u"From date should be less than To Date")));
  EXPECT_THAT(NewRequests(), IsEmpty());
}

TEST_F(FrmDrTest, NobodyLoggedInMeansNoRequest) {
  connect_.Logout();
  EXPECT_EQ(NewAlerts().size(), 1U);
  forms_.On<frmLogin>([](frmLogin& login) { login.cmdCancel.UserPress(); });
  WithForm([](frmDR& form) { form.cmdGet.UserPress(); });
  EXPECT_THAT(NewRequests(), IsEmpty());
  EXPECT_THAT(NewAlerts(), IsEmpty());

  forms_.On<frmLogin>([this](frmLogin& login) {
    connect_.BeginSession(u"joe");
    login.Unload();
  });
  EXPECT_EQ(Get("No,1"), ReportOutcome::kWritten);
}

TEST_F(FrmDrTest, KeepsWhatWasWrittenWhenTheHostFails) {
  faults_.Fail("Sheet::Write", 4, 1);
  WithForm([this](frmDR& form) {
    EXPECT_EQ(Get(form, "<SMS>No-State,1-A,2-B</SMS>"), ReportOutcome::kNotFetched);
    EXPECT_THAT(NewAlerts(), ElementsAre(GeneralError(u"Application-defined or object-defined error")));
    EXPECT_EQ(Cell(u"A", 2) + Cell(u"B", 2), u"1");
    EXPECT_EQ(forms_.Open<frmDisplay>(), nullptr);

    form.txtSheetName.UserType(u"Again");
    EXPECT_EQ(Get(form, "No,1"), ReportOutcome::kWritten);
  });
}

TEST_F(FrmDrTest, StopsWritingWhenTheUserCancels) {
  forms_.OnYield([this] {
    frmDisplay* const window = forms_.Open<frmDisplay>();
    if (window != nullptr && Cell(u"A", 3) == u"2") window->Cancel_Process.UserPress();
  });
  WithForm([this](frmDR& form) {
    EXPECT_EQ(Get(form, "<SMS>No,1,2,3,4,5</SMS>"), ReportOutcome::kNotFetched);
    EXPECT_EQ(Cell(u"A", 3) + Cell(u"A", 4), u"2");
    EXPECT_THAT(NewAlerts(), ElementsAre(Warning(u"3 of 5 records were left out because you cancelled.")));

    forms_.OnYield({});
    form.txtSheetName.UserType(u"Again");
    EXPECT_EQ(Get(form, "<SMS>No,1,2</SMS>"), ReportOutcome::kWritten);
  });
}

TEST_F(FrmDrTest, ASecondPressWhileFetchingDoesNothing) {
  WithForm([this](frmDR& form) {
    forms_.OnYield([&form] { form.cmdGet.UserPress(); });
    EXPECT_EQ(Get(form, "<SMS>No,1</SMS>"), ReportOutcome::kWritten);
    forms_.OnYield({});
  });
  EXPECT_EQ(NewRequests().size(), 1U);
}

// A sheet of three rows.
class ShortSheet : public MemorySheet {
 public:
  ShortSheet() : MemorySheet(u"Short") {}

  std::int32_t RowLimit() override { return 3; }
  void Write(const CellAddress& address, TextView text) override {
    if (address.row > 3) throw RuntimeError(1004, u"beyond the sheet");
    MemorySheet::Write(address, text);
  }
};

class ShortWorkbook : public Workbook {
 public:
  std::unique_ptr<Sheet> ActiveSheet() override { return std::make_unique<ShortSheet>(); }
  std::vector<Text> SheetNames() override { return {}; }
  std::unique_ptr<Sheet> AddSheet(TextView) override { return ActiveSheet(); }
};

class ShortApplication : public MemoryApplication {
 public:
  std::unique_ptr<Workbook> ActiveWorkbook() override { return std::make_unique<ShortWorkbook>(); }
};

TEST_F(FrmDrTest, SaysWhatTheSheetHadNoRowsFor) {
  ShortApplication application;
  const Platform platform{application, forms_, internet_, settings_, recordsets_, clock_, Windows1252()};
  Connect connect(platform);
  connect.OnConnection();
  connect.BeginSession(u"joe");
  forms_.On<frmDR>([this](frmDR& form) {
    form.txtSheetName.UserType(u"Report");
    EXPECT_EQ(Get(form, "<SMS>No,1,2</SMS>"), ReportOutcome::kWritten);
    EXPECT_THAT(NewAlerts(), IsEmpty());
    EXPECT_EQ(Get(form, "<SMS>No,1,2,3,4,5</SMS>"), ReportOutcome::kWritten);
    form.cmdCancel.UserPress();
  });
  connect.DeliveryReport();
  EXPECT_THAT(NewAlerts(),
              ElementsAre(Warning(u"3 of 5 records were left out because the sheet has no more rows.")));
}

}  // namespace
}  // namespace quorvel
