// A user's work with the add-in, from login to logout, against a gateway on loopback. The environment
// variable QUORVEL_SANDBOX_PORT holds its port.

#include <cstdlib>
#include <fstream>
#include <stdexcept>

#include "hosts/excel/system_code_page.h"
#include "hosts/excel/wininet_internet.h"
#include "platform/numbers.h"
#include "tests/excel/loaded_addin.h"
#include "tests/excel/picture.h"

namespace quorvel::tests {
namespace {

constexpr TextView kLoggedIn = u"Logged in successfully";

std::vector<Text> Fields(const std::string& line) {
  std::vector<Text> fields(1);
  bool quoted = false;
  for (const char16_t unit : FromUtf8(line)) {
    if (unit == u'"') {
      quoted = !quoted;
    } else if (unit == u',' && !quoted) {
      fields.emplace_back();
    } else {
      fields.back() += unit;
    }
  }
  return fields;
}

class SendTest : public RegisteredAddin {
 protected:
  SendTest() {
    const char* const port = std::getenv("QUORVEL_SANDBOX_PORT");
    if (port == nullptr) throw std::runtime_error("QUORVEL_SANDBOX_PORT is not set");
    port_ = FromUtf8(port);
    FillSheet(3);
    Fetch(u"/_sandbox/reset", "POST");
    stand_in_.Load(u"Quorvel.Connect");
    SetProxy();
    LogIn();
  }

  // A heading and that many people: name, number, amount.
  void FillSheet(std::int32_t people) {
    stand_in_.book->sheets.clear();
    const auto sheet = stand_in_.book->Add(u"People");
    constexpr TextView kHeadings[] = {u"Name", u"Mobile", u"Amount"};
    for (std::int32_t column = 1; column <= 3; ++column) {
      sheet->At(1, column).value = Variant(kHeadings[column - 1]);
    }
    for (std::int32_t row = 2; row <= people + 1; ++row) {
      sheet->At(row, 1).value = Variant(u"Person " + ToText(CellValue(double{1.0 * row})));
      sheet->At(row, 2).value = Variant(9876543210.0 + row);
      sheet->At(row, 3).value = Variant(2.5 * row);
      sheet->At(row, 3).display = u"EUR " + ToText(CellValue(2.5 * row));
    }
  }

  // The sheet that users begin with, as the application opens it; the tests run at the root of the tree.
  void OpenExample() {
    stand_in_.book->sheets.clear();
    const auto sheet = stand_in_.book->Add(u"customers");
    std::ifstream file("examples/customers.csv");
    std::string line;
    for (std::int32_t row = 1; std::getline(file, line); ++row) {
      std::int32_t column = 1;
      for (const Text& text : Fields(line)) {
        Cell& cell = sheet->At(row, column++);
        cell.value = IsNumeric(TextView(text)) ? Variant(ToDouble(text)) : Variant(text);
        cell.display = text;
      }
    }
  }

  // What the gateway's inspection page answers.
  std::string Fetch(const Text& page, std::string_view verb = "GET") {
    const auto session = internet_.Open({"Test", Internet::Access::kDirect, u"", u"", 0});
    const auto connection =
        internet_.Connect(session, {u"127.0.0.1", static_cast<std::int16_t>(std::atoi(ToUtf8(port_).c_str())),
                                    u"", u"", kServiceHttp, 0});
    const std::string path = ToUtf8(page);
    const auto request = internet_.OpenRequest(connection, {verb, path, "HTTP/1.1", "", kFlagReload});
    EXPECT_TRUE(internet_.Send(request, "", ""));
    std::string answer;
    for (auto block = internet_.Read(request, 4096); !block.bytes.empty();
         block = internet_.Read(request, 4096)) {
      answer += block.bytes;
    }
    for (const auto handle : {request, connection, session}) internet_.Close(handle);
    return answer;
  }

  std::string Messages() { return Fetch(u"/_sandbox/messages"); }

  void SetProxy() {
    user_.Expect(u"SMS - Proxy Settings", [this](const Dialog& dialog) {
      dialog.Choose(u"Connection type", u"Use proxy list");
      dialog.Type(u"Proxy host", u"127.0.0.1");
      dialog.Type(u"Port", port_);
      TakePicture(dialog.window(), "proxy");
      dialog.Press(u"OK");
    });
    ClickMenu(u"Proxy Settings");
  }

  void LogIn() {
    user_.Expect(u"SMS - Login", [this](const Dialog& dialog) {
      dialog.Type(u"CRN", u"1001");
      dialog.Type(u"User name", u"demo");
      dialog.Type(u"Password", u"demo");
      TakePicture(dialog.window(), "login");
      ExpectAlert(u"S M S", kLoggedIn);
      dialog.PressKey(VK_RETURN);
    });
    ClickMenu(u"Login");
    EXPECT_FALSE(MenuItem(u"Login")->enabled);
    EXPECT_TRUE(MenuItem(u"Logout")->enabled);
  }

  static void Compose(const Dialog& dialog, TextView message) {
    dialog.Choose(u"Mobile numbers in column", u"B");
    dialog.Press(u"All rows");
    dialog.TypeInto(dialog.FieldOfClass(L"RICHEDIT50W"), message);
  }

  // `step` closes the form.
  void OpenSendForm(std::function<void(const Dialog&)> step) {
    user_.Expect(u"Send SMS", std::move(step));
    Click(*stand_in_.bars, ToolbarButton(u"Send SMS"));
  }

  SystemCodePage code_page_;
  WinInetInternet internet_{code_page_};
  Text port_;
};

TEST_F(SendTest, PersonalisedMessagesArriveAfterAPreview) {
  OpenExample();
  OpenSendForm([&](const Dialog& form) {
    Compose(form, u"Dear #A#, your invoice of EUR #C# is due on #D#.");
    form.Press(u"Show a preview before sending");
    user_.Then([&, form] { TakePicture(form.window(), "send"); });
    user_.Expect(u"Preview And Send SMS", [&](const Dialog& preview) {
      TakePicture(preview.window(), "preview");
      EXPECT_EQ(WindowText(preview.FieldOfClass(L"RICHEDIT50W")),
                u"Dear Asha Rao, your invoice of EUR 1,250.00 is due on 12/05/2026.");
      EXPECT_FALSE(preview.IsUsable(u"<< Previous SMS"));
      for (int next = 0; next < 5; ++next) preview.Press(u"Next SMS >>");
      user_.Then([this, preview] {
        EXPECT_EQ(WindowText(preview.FieldOfClass(L"RICHEDIT50W")),
                  u"Dear Grace Lin, your invoice of EUR 640.10 is due on 12/08/2026.");
        EXPECT_FALSE(preview.IsUsable(u"Next SMS >>"));
        ExpectAlert(u" S M S ", u"6 SMS Messages Sent");
        preview.Press(u"Send SMS");
      });
    });
    user_.Then([form] {
      form.Press(u"Send SMS");
      form.Press(u"Close");
    });
  });
  const std::string messages = Messages();
  for (const char* const part :
       {"9876543211", "Holm, your invoice of EUR 89.50", "EUR 1,250.00 is due on 12/05/2026."}) {
    EXPECT_NE(messages.find(part), std::string::npos) << messages;
  }
}

TEST_F(SendTest, APreviewThatIsClosedSendsNothing) {
  OpenSendForm([&](const Dialog& form) {
    Compose(form, u"Hello");
    form.Press(u"Show a preview before sending");
    user_.Expect(u"Preview And Send SMS",
                 [](const Dialog& preview) { SendMessageW(preview.window(), WM_CLOSE, 0, 0); });
    form.Press(u"Send SMS");
    form.Press(u"Close");
  });
  EXPECT_EQ(Messages().find("Hello"), std::string::npos);
}

TEST_F(SendTest, CancelStopsALongSendBeforeItsRequest) {
  FillSheet(20000);
  OpenSendForm([&](const Dialog& form) {
    Compose(form, u"Hello #A#");
    const std::function<void(const Dialog&)> cancel = [&](const Dialog& progress) {
      if (progress.Message().find(u"Processing Record") == Text::npos) {
        return user_.Then([&, progress] { cancel(progress); });  // not at the rows yet
      }
      TakePicture(progress.window(), "progress");
      EXPECT_FALSE(IsWindowEnabled(form.window())) << "a second press of Send would send twice";
      progress.Press(u"Cancel");
    };
    user_.ExpectProgress(cancel);
    form.Press(u"Send SMS");
    EXPECT_TRUE(IsWindowEnabled(form.window()));
    form.Press(u"Close");
  });
  EXPECT_EQ(Messages().find("Hello"), std::string::npos);
}

TEST_F(SendTest, AMessageInAnotherScriptArrivesUnchanged) {
  OpenSendForm([&](const Dialog& form) {
    Compose(form, u"\u0645\u0631\u062D\u0628\u0627 #A#");
    ExpectAlert(u"S M S Application", u"3 SMS Messages Sent");
    form.Press(u"Send SMS");
    form.Press(u"Close");
  });
  EXPECT_NE(Messages().find(ToUtf8(u"\u0645\u0631\u062D\u0628\u0627 Person 3")), std::string::npos)
      << Messages();
}

TEST_F(SendTest, AFilterTypedIntoTheInputBoxRestrictsTheSend) {
  OpenSendForm([&](const Dialog& form) {
    Compose(form, u"Dear #A#");
    form.Press(u"Filter");
    user_.Then([&, form] {
      user_.Expect(u"SMS", [](const Dialog& box) {
        box.TypeInto(box.FieldOfClass(L"Edit"), u"#A# = 'Person 3'");
        TakePicture(box.window(), "filter");
        box.Press(u"OK");
      });
      form.Press(u"Set filter...");
      user_.Expect(u" S M S ", [](const Dialog& question) {
        EXPECT_EQ(ToUtf8(question.Message()), "1 records has been filtered. Do you want to SMS?");
        SendMessageW(question.window(), WM_COMMAND, IDOK, 0);
      });
      ExpectAlert(u" S M S ", u"1 SMS Messages Sent");
      form.Press(u"Send SMS");
      form.Press(u"Close");
    });
  });
  EXPECT_NE(Messages().find("Dear Person 3"), std::string::npos);
  EXPECT_EQ(Messages().find("Dear Person 2"), std::string::npos);
}

TEST_F(SendTest, TemplatesAndSenderIdsComeFromTheGateway) {
  OpenSendForm([&](const Dialog& form) {
    form.Press(u"Templates");
    user_.Then([&, form] {
      form.Choose(u"Sender ID", u"SHOPIN");
      form.Choose(u"Template", u"Greeting");
      user_.Then([form] {
        EXPECT_EQ(WindowText(form.FieldOfClass(L"RICHEDIT50W")), u"Hello #B#, thank you for your order.");
        TakePicture(form.window(), "templates");
        form.Press(u"Close");
      });
    });
  });
}

struct Panel {
  TextView button;
  TextView frame;
  const char* picture;
};

constexpr Panel kPanels[] = {{u"E-mail", u"E-mail copy", "panel-email"},
                             {u"Filter", u"Filter", "panel-filter"},
                             {u"Settings", u"Settings", "panel-settings"},
                             {u"Scheduler", u"Scheduler", "panel-scheduler"},
                             {u"Account", u"Account", "panel-account"}};

TEST_F(SendTest, EachPanelTakesThePlaceOfTheOneBefore) {
  std::size_t shown = 0;
  const std::function<void(Dialog)> step = [&](Dialog form) {
    if (shown > 0) {
      const Panel& panel = kPanels[shown - 1];
      EXPECT_EQ(form.Frames(),
                (std::vector<Text>{u"Recipients", u"Rows", u"Message", u"Sender", Text(panel.frame)}));
      TakePicture(form.window(), panel.picture);
    }
    if (shown == std::size(kPanels)) return form.Press(u"Close");
    form.Press(kPanels[shown++].button);
    user_.Then([&step, form] { step(form); });  // shown by then
  };
  OpenSendForm(step);
  EXPECT_EQ(shown, std::size(kPanels));
}

TEST_F(SendTest, DeliveryReportsComeIntoANewSheet) {
  OpenSendForm([&](const Dialog& form) {
    Compose(form, u"For the report");
    ExpectAlert(u" S M S ", u"3 SMS Messages Sent");
    form.Press(u"Send SMS");
    form.Press(u"Close");
  });
  user_.Expect(u"SMS - Delivery Reports", [&](const Dialog& form) {
    form.Type(u"New sheet name", u"Report");
    form.Choose(u"Sent through", u"ALL");
    TakePicture(form.window(), "reports");
    form.Press(u"Get");
    form.Press(u"Close");
  });
  stand_in_.AddinObject().Call(L"DeliveryReport");
  const auto& sheets = stand_in_.book->sheets;
  ASSERT_EQ(sheets.size(), 2U);
  EXPECT_EQ(sheets[0]->name, u"Report");
  EXPECT_TRUE(sheets[0]->At(1, 1).bold);
  Text all;
  for (std::int32_t row = 2; row <= 4; ++row) {
    for (std::int32_t column = 1; column <= 8; ++column) all += sheets[0]->TextAt(row, column) + u"|";
  }
  EXPECT_NE(all.find(u"For the report"), Text::npos) << ToUtf8(all);
}

TEST_F(SendTest, BalanceAndLogout) {
  user_.Expect(u" S M S ", [](const Dialog& alert) {
    EXPECT_NE(alert.Message().find(u"Your credit balance is "), Text::npos);
    alert.PressKey(VK_ESCAPE);
  });
  stand_in_.AddinObject().Call(L"GetBalance");
  ExpectAlert(u"S M S", u"Logged out successfully");
  ClickMenu(u"Logout");
  EXPECT_TRUE(MenuItem(u"Login")->enabled);
  EXPECT_FALSE(MenuItem(u"Logout")->enabled);
}

}  // namespace
}  // namespace quorvel::tests
