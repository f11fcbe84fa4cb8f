#include "reports/frmDR.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "account/frmLogin.h"
#include "addin/common/AlertBox.h"
#include "platform/memory/failing_platform.h"
#include "platform/memory/fixed_clock.h"
#include "platform/memory/memory_recordset.h"
#include "platform/memory/memory_settings.h"
#include "platform/memory/memory_workbook.h"
#include "platform/memory/scripted_forms.h"
#include "platform/memory/scripted_internet.h"

namespace quorvel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct Alert {
  Text message;
  int style = 0;
  Text title;

  friend bool operator==(const Alert&, const Alert&) = default;
};

void PrintTo(const Alert& alert, std::ostream* out) {
  *out << ToUtf8(alert.title) << ": " << ToUtf8(alert.message) << " (" << alert.style << ")";
}

Alert Information(TextView message) {
  return {Text(message), kInformation, u"SMS"};
}

Alert Critical(TextView message) {
  return {Text(message), kCritical, u"SMS"};
}

// An account that is logged in on the first of March 2024, a workbook with the sheet "Data", and the form.
class FrmDrTest : public testing::Test {
 protected:
  FrmDrTest() {
    workbook_ = &application_.OpenWorkbook(u"Data");
    session_.LoggedIn = true;
    session_.UserName = u" my user&co ";
    session_.Password = u"ab";
    settings_.Write(kModesSetting, u"L-Sheet,C-Web-Campaign");
    forms_.On<AlertBox>([this](AlertBox& box) {
      alerts_.push_back({box.Text1.text(), box.style(), box.caption()});
      box.btnOk.UserPress();
    });
  }

  // A form whose user named the new sheet.
  frmDR& Form(TextView sheet = u"Report") {
    form_ = std::make_unique<frmDR>(context_);
    form_->Load();
    form_->txtSheetName.UserType(sheet);
    return *form_;
  }

  // Presses cmdGet; the gateway answers `reply`.
  ReportOutcome Get(std::string_view reply) {
    internet_.Answer(reply);
    frmDR& form = Form();
    form.cmdGet.UserPress();
    return form.outcome();
  }

  MemorySheet* Report() { return workbook_->Find(u"Report"); }
  Text Cell(TextView column, std::int32_t row) {
    return Report() == nullptr ? u"no sheet" : Report()->CellText({column, row});
  }

  MemoryApplication application_;
  MemoryWorkbook* workbook_ = nullptr;
  Faults faults_;
  FailingApplication failing_{application_, faults_};
  ScriptedForms forms_;
  ScriptedInternet internet_;
  MemorySettings stored_;
  FixedClock clock_{{2024, 3, 1, 10, 0, 0}};
  MemoryRecordsets recordsets_{clock_};
  Platform platform_{failing_, forms_, internet_, stored_, recordsets_, clock_, Windows1252()};
  Session session_;
  Progress progress_{forms_, clock_};
  Gateway gateway_{platform_, session_, progress_};
  SettingsStore settings_{stored_};
  AddInContext context_{platform_, session_, progress_, gateway_, settings_};
  std::vector<Alert> alerts_;
  std::unique_ptr<frmDR> form_;
};

TEST_F(FrmDrTest, OpensOnTodayAndAllModes) {
  const frmDR& form = Form();
  EXPECT_THAT(form.cmbMode.items(), ElementsAre(u"Sheet", u"Web-Campaign", u"ALL"));
  EXPECT_EQ(form.cmbMode.text(), u"ALL");
  EXPECT_EQ(form.cmbFromDateYear.items().front(), u"2003");
  EXPECT_EQ(form.cmbFromDateYear.items().back(), u"2024");
  for (const ComboBox* year : {&form.cmbFromDateYear, &form.cmbToDateYear}) EXPECT_EQ(year->text(), u"2024");
  for (const ComboBox* month : {&form.cmbFromDateMonth, &form.cmbTodateMonth}) {
    EXPECT_EQ(month->text(), u"March");
    EXPECT_EQ(month->list_count(), 12);
  }
  for (const ComboBox* day : {&form.cmbFromDateDay, &form.cmbToDateDay}) {
    EXPECT_EQ(day->text(), u"1");
    EXPECT_EQ(day->list_count(), 31);
  }
}

TEST_F(FrmDrTest, OffersTheDaysOfTheChosenMonth) {
  frmDR& form = Form();
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
}

TEST_F(FrmDrTest, PostsTheCredentialsTheDatesAndTheMode) {
  internet_.Answer("<SMS>0</SMS>");
  internet_.Answer("<SMS>0</SMS>");
  frmDR& form = Form();
  form.cmdGet.UserPress();
  form.cmbMode.UserSelect(1);
  form.cmbFromDateMonth.UserSelect(0);
  form.cmbFromDateDay.UserSelect(11);
  form.cmbToDateDay.UserSelect(8);
  form.cmdGet.UserPress();
  ASSERT_EQ(internet_.requests().size(), 2U);
  EXPECT_EQ(internet_.requests()[0].object, "Merrow/Get_DR.asp");
  EXPECT_EQ(internet_.requests()[0].body,
            "user=my user&co&passwd=o%0Do%02&FromDate=20240301&ToDate=20240301&TOD=ALL");
  EXPECT_THAT(internet_.requests()[1].body, testing::EndsWith("&FromDate=20240112&ToDate=20240309&TOD=C"));
}

TEST_F(FrmDrTest, WritesTheRecordsUnderABoldHeading) {
  EXPECT_EQ(Get("<SMS>No-Day,11-2024~03~01,22-a\x80"
                "b\x01"
                "c\r\nd</SMS>"),
            ReportOutcome::kWritten);
  EXPECT_THAT(alerts_, IsEmpty());
  ASSERT_NE(Report(), nullptr);
  EXPECT_EQ(workbook_->active().name(), u"Report");
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
  ASSERT_NE(Report(), nullptr);
  EXPECT_EQ(Cell(u"Z", 1) + Cell(u"AA", 1), u"2627");
  EXPECT_EQ(Cell(u"AB", 2), u"28");
  EXPECT_TRUE(Report()->Bold({u"AB", 1}));
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
    alerts_.clear();
    EXPECT_EQ(Get(expected.reply), expected.outcome);
    EXPECT_THAT(alerts_, ElementsAre(expected.alert));
    EXPECT_EQ(Report(), nullptr);
    EXPECT_EQ(forms_.Open<frmDisplay>(), nullptr);
  }
}

TEST_F(FrmDrTest, SaysWhenTheAnswerBrokeOff) {
  const Alert cut{u"The connection broke off. The report is incomplete. Please get it again.", kWarning,
                  u"SMS"};
  EXPECT_EQ(Get("<SMS>No-State,11-DEL"), ReportOutcome::kNotFetched);
  EXPECT_THAT(alerts_, ElementsAre(cut));
  EXPECT_EQ(Cell(u"B", 2), u"DEL");
}

TEST_F(FrmDrTest, ChecksTheFieldsInOrder) {
  frmDR& form = Form(u"");
  form.cmbToDateYear.UserSelect(0);
  application_.CloseWorkbook();
  form.cmdGet.UserPress();
  workbook_ = &application_.OpenWorkbook(u"Data");
  form.cmdGet.UserPress();
  form.txtSheetName.UserType(u"dATA");
  form.cmdGet.UserPress();
  form.txtSheetName.UserType(u"Data 2");
  form.cmdGet.UserPress();
  EXPECT_THAT(alerts_,
              ElementsAre(Information(u"Work book does not exit. Please check"),
                          Information(u"Sheet name should not be empty"),
                          Information(u"Sheet name(dATA) already exits.\r\nPlease choose some other"),
                          Information(u"From date should be less than To Date")));
  EXPECT_THAT(internet_.calls(), IsEmpty());
}

TEST_F(FrmDrTest, NobodyLoggedInMeansNoRequest) {
  session_.LoggedIn = false;
  frmDR& form = Form();
  forms_.On<frmLogin>([](frmLogin& login) { login.cmdCancel.UserPress(); });
  form.cmdGet.UserPress();
  EXPECT_THAT(internet_.calls(), IsEmpty());
  EXPECT_THAT(alerts_, IsEmpty());

  forms_.On<frmLogin>([this](frmLogin& login) {
    session_.LoggedIn = true;
    login.Unload();
  });
  internet_.Answer("No,1");
  form.cmdGet.UserPress();
  EXPECT_EQ(form.outcome(), ReportOutcome::kWritten);
}

TEST_F(FrmDrTest, KeepsWhatWasWrittenWhenTheHostFails) {
  faults_.Fail("Sheet::Write", 4, 1);
  EXPECT_EQ(Get("<SMS>No-State,1-A,2-B</SMS>"), ReportOutcome::kNotFetched);
  ASSERT_EQ(alerts_.size(), 1U);
  EXPECT_EQ(alerts_.front().title, u"Error");
  EXPECT_EQ(Cell(u"A", 2) + Cell(u"B", 2), u"1");
  EXPECT_EQ(forms_.Open<frmDisplay>(), nullptr);

  internet_.Answer("No,1");
  form_->txtSheetName.UserType(u"Again");
  form_->cmdGet.UserPress();
  EXPECT_EQ(form_->outcome(), ReportOutcome::kWritten);
}

TEST_F(FrmDrTest, StopsWritingWhenTheUserCancels) {
  progress_.CancelRequested = true;  // left over from an earlier send
  forms_.OnYield([this] {
    frmDisplay* const window = forms_.Open<frmDisplay>();
    if (window != nullptr && Report() != nullptr && Report()->UsedRows() == 3)
      window->Cancel_Process.UserPress();
  });
  EXPECT_EQ(Get("<SMS>No,1,2,3,4,5</SMS>"), ReportOutcome::kNotFetched);
  ASSERT_NE(Report(), nullptr);
  EXPECT_EQ(Report()->UsedRows(), 3);
  EXPECT_THAT(alerts_,
              ElementsAre(Alert{u"3 of 5 records were left out because you cancelled.", kWarning, u"SMS"}));
}

TEST_F(FrmDrTest, ASecondPressWhileFetchingDoesNothing) {
  forms_.OnYield([this] { form_->cmdGet.UserPress(); });
  EXPECT_EQ(Get("<SMS>No,1</SMS>"), ReportOutcome::kWritten);
  EXPECT_EQ(internet_.requests().size(), 1U);
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
  const Platform platform{application, forms_, internet_, stored_, recordsets_, clock_, Windows1252()};
  const AddInContext context{platform, session_, progress_, gateway_, settings_};
  for (const std::string_view reply : {"<SMS>No,1,2</SMS>", "<SMS>No,1,2,3,4,5</SMS>"}) {
    internet_.Answer(reply);
    frmDR form(context);
    form.Load();
    form.txtSheetName.UserType(u"Report");
    form.cmdGet.UserPress();
    EXPECT_EQ(form.outcome(), ReportOutcome::kWritten);
  }
  EXPECT_THAT(alerts_, ElementsAre(Alert{u"3 of 5 records were left out because the sheet has no more rows.",
                                         kWarning, u"SMS"}));
}

}  // namespace
}  // namespace quorvel
