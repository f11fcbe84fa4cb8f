// The renderer: native dialogs show what a form says and bring back what the user does.

#include <gtest/gtest.h>

#include <array>
#include <stdexcept>

#include "addin/common/alert.h"
#include "hosts/excel/wide.h"
#include "hosts/excel/win32_forms.h"
#include "hosts/excel/window_scope.h"
#include "hosts/excel/windows10.h"
#include "platform/runtime_error.h"
#include "tests/excel/user.h"

namespace quorvel::tests {
namespace {

class SampleForm : public Form {
 public:
  SampleForm() : Form("SampleForm", u"Sample", 200, 160) {
    notes.set_text(u"one\ntwo");
    choice.AddItem(u"First");
    choice.AddItem(u"Second");
    accept.on_click = [this] {
      accepted = true;
      Unload();
    };
    leave.on_click = [this] { Unload(); };
  }

  Label name_label{*this, "name_label", {8, 8, 60, 10}, u"&Name"};
  TextBox name_box{*this, "name_box", {70, 6, 120, 14}};
  Label notes_label{*this, "notes_label", {8, 26, 60, 10}, u"N&otes"};
  TextBox notes{*this, "notes", {70, 24, 120, 30}, TextBox::Style::kRichText};
  Label choice_label{*this, "choice_label", {8, 60, 60, 10}, u"Choice"};
  ComboBox choice{*this, "choice", {70, 58, 60, 14}};
  OptionButton one{*this, "one", {8, 78, 40, 10}, u"One"};
  TextBox detail{*this, "detail", {50, 76, 40, 14}};
  OptionButton two{*this, "two", {100, 78, 40, 10}, u"T&wo"};
  CheckBox loud{*this, "loud", {8, 94, 60, 10}, u"&Loud"};
  Frame extras{*this, "extras", {8, 106, 180, 28}, u"Extras"};
  TextBox extra{extras, "extra", {14, 116, 60, 12}};
  Button accept{*this, "accept", {60, 140, 50, 14}, u"Accept", Button::Role::kDefault};
  Button leave{*this, "leave", {120, 140, 50, 14}, u"Leave", Button::Role::kCancel};
  Timer timer{*this, "timer"};
  bool accepted = false;
  bool may_close = true;

 protected:
  bool Form_QueryUnload() override { return may_close; }
};

class Win32FormsTest : public testing::Test {
 protected:
  void TearDown() override {
    EXPECT_EQ(user_.problems(), std::vector<std::string>());
    EXPECT_EQ(user_.pending(), 0U);
    EXPECT_TRUE(IsWindowEnabled(host_));
    DestroyWindow(host_);
    User::Settle();
  }

  HWND host_ = CreateWindowExW(0, L"Static", L"Host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 800, 600,
                               nullptr, nullptr, nullptr, nullptr);
  User user_;
  Win32Forms forms_{[this] { return host_; }};
  SampleForm form_;
};

TEST_F(Win32FormsTest, TypedTextAndChoicesReachTheFormAndItsChangesTheWindow) {
  form_.name_box.set_text(u"initial");
  form_.name_box.on_change = [this] { form_.loud.set_value(true); };
  user_.Expect(u"Sample", [&](const Dialog& dialog) {
    EXPECT_EQ(WindowText(dialog.Field(u"Name")), u"initial");
    EXPECT_EQ(WindowText(dialog.Field(u"Notes")), u"one\r\ntwo");
    EXPECT_EQ(form_.notes.text(), u"one\ntwo") << "showing a text is no typing";
    dialog.Type(u"Name", u"Zoë \u0391\u05D0");
    SendMessageW(dialog.Field(u"Notes"), EM_REPLACESEL, 0,
                 reinterpret_cast<LPARAM>(L"\v"));  // Shift and Enter
    EXPECT_EQ(form_.notes.text(), u"\r\none\r\ntwo");
    dialog.Type(u"Notes", u"a\rb");
    dialog.Choose(u"Choice", u"Second");
    dialog.Press(u"Two");
    EXPECT_EQ(form_.name_box.text(), u"Zoë \u0391\u05D0");
    EXPECT_EQ(form_.notes.text(), u"a\r\nb");
    EXPECT_EQ(form_.choice.list_index(), 1);
    EXPECT_TRUE(form_.two.value());
    dialog.Press(u"One");
    user_.Then([&, dialog] {  // the loop has shown the changes by now
      EXPECT_EQ(SendMessageW(dialog.Button(u"One"), BM_GETCHECK, 0, 0), BST_CHECKED);
      EXPECT_EQ(SendMessageW(dialog.Button(u"Two"), BM_GETCHECK, 0, 0), BST_UNCHECKED);
      EXPECT_EQ(SendMessageW(dialog.Button(u"Loud"), BM_GETCHECK, 0, 0), BST_CHECKED);
      dialog.Press(u"Accept");
    });
  });
  forms_.ShowModal(form_);
  EXPECT_TRUE(form_.accepted);
}

TEST_F(Win32FormsTest, TabVisitsEveryControlInOrderAndChangesNothing) {
  form_.name_box.SetFocus();
  std::string visited;
  const std::function<void(Dialog)> visit = [&](Dialog dialog) {
    visited += std::string(form_.active_control()->name()) + " ";
    if (form_.active_control() == &form_.notes) {
      CHARRANGE selected{};
      SendMessageW(GetFocus(), EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&selected));
      EXPECT_EQ(selected.cpMin, selected.cpMax) << "the next key would replace it all";
    }
    if (form_.active_control() == &form_.leave) return dialog.PressKey(VK_RETURN);
    dialog.PressKey(VK_TAB);
    user_.Then([&visit, dialog] { visit(dialog); });
  };
  user_.Expect(u"Sample", visit);
  forms_.ShowModal(form_);
  EXPECT_EQ(visited, "name_box notes choice one detail two loud extra accept leave ");
  EXPECT_FALSE(form_.one.value() || form_.two.value() || form_.loud.value());
  EXPECT_FALSE(form_.accepted) << "Enter presses the button that has the focus";
}

TEST_F(Win32FormsTest, ShiftAndTabGoBackwards) {
  form_.detail.SetFocus();
  std::array<BYTE, 256> keys{};
  user_.Expect(u"Sample", [&](const Dialog& dialog) {
    keys[VK_SHIFT] = 0x80;
    SetKeyboardState(keys.data());
    dialog.PressKey(VK_TAB);
    user_.Then([&, dialog] {
      EXPECT_EQ(form_.active_control(), &form_.one);
      keys[VK_SHIFT] = 0;
      SetKeyboardState(keys.data());
      dialog.Press(u"Leave");
    });
  });
  forms_.ShowModal(form_);
}

TEST_F(Win32FormsTest, ArrowKeysChooseAmongTheOptionButtonsOfAFrame) {
  form_.one.SetFocus();
  user_.Expect(u"Sample", [&](const Dialog& dialog) {
    EXPECT_FALSE(form_.one.value());
    dialog.PressKey(VK_DOWN);
    user_.Then([&, dialog] {
      EXPECT_TRUE(form_.two.value()) << "whatever stands in between";
      EXPECT_EQ(GetFocus(), dialog.Button(u"Two"));
      dialog.PressKey(VK_RIGHT);
      user_.Then([&, dialog] {
        EXPECT_TRUE(form_.one.value());
        EXPECT_EQ(GetFocus(), dialog.Button(u"One"));
        dialog.PressKey(VK_RETURN);
      });
    });
  });
  forms_.ShowModal(form_);
  EXPECT_TRUE(form_.accepted) << "Enter presses the default button";
}

TEST_F(Win32FormsTest, AccessKeysReachFieldsByTheirLabelsAndPressButtons) {
  form_.choice.SetFocus();
  user_.Expect(u"Sample", [&](const Dialog& dialog) {
    dialog.PressAccessKey(u'l');
    dialog.PressAccessKey(u'w');
    dialog.PressAccessKey(u'o');
    user_.Then([&, dialog] {
      EXPECT_TRUE(form_.loud.value());
      EXPECT_TRUE(form_.two.value());
      EXPECT_EQ(GetFocus(), dialog.Field(u"Notes"));
      dialog.PressKey(VK_RETURN);
      user_.Then([&, dialog] {
        EXPECT_EQ(form_.notes.text(), u"\r\none\r\ntwo") << "in a text of several lines Enter is a line end";
        dialog.PressKey(VK_ESCAPE);
      });
    });
  });
  forms_.ShowModal(form_);
  EXPECT_FALSE(form_.accepted);
  EXPECT_FALSE(form_.loaded()) << "Escape presses the cancel button";
}

TEST_F(Win32FormsTest, AFormMayRefuseToClose) {
  form_.may_close = false;
  user_.Expect(u"Sample", [&](const Dialog& dialog) {
    SendMessageW(dialog.window(), WM_CLOSE, 0, 0);
    EXPECT_TRUE(form_.loaded());
    dialog.Press(u"Leave");
  });
  forms_.ShowModal(form_);
}

bool RunsRightToLeft(HWND box) {
  PARAFORMAT2 format{};
  format.cbSize = sizeof(format);
  SendMessageW(box, EM_GETPARAFORMAT, 0, reinterpret_cast<LPARAM>(&format));
  return (format.wEffects & PFE_RTLPARA) != 0 && format.wAlignment == PFA_RIGHT;
}

TEST_F(Win32FormsTest, ATextRunsAsItsFirstLetterDoes) {
  form_.notes.set_text(u"1) \u0645\u0631\u062D\u0628\u0627\nabc");
  user_.Expect(u"Sample", [&](const Dialog& dialog) {
    EXPECT_TRUE(RunsRightToLeft(dialog.Field(u"Notes")));
    dialog.Type(u"Notes", u"abc \u05D0");
    EXPECT_FALSE(RunsRightToLeft(dialog.Field(u"Notes")));
    dialog.Type(u"Notes", u"\u05D0 abc");
    EXPECT_TRUE(RunsRightToLeft(dialog.Field(u"Notes")));
    EXPECT_EQ(form_.notes.text(), u"\u05D0 abc");
    dialog.Press(u"Leave");
  });
  forms_.ShowModal(form_);
  user_.Expect(u"Alert", [](const Dialog& dialog) {
    EXPECT_NE(GetWindowLongPtrW(dialog.FieldOfClass(L"Edit"), GWL_EXSTYLE) & WS_EX_RTLREADING, 0);
    dialog.Press(u"OK");
  });
  ShowAlert(forms_, u"\u05E9\u05DC\u05D5\u05DD", kInformation, u"Alert");
}

TEST_F(Win32FormsTest, AControlOutOfReachTakesNoFocusAndHidesWithItsFrame) {
  user_.Expect(u"Sample", [&](const Dialog& dialog) {
    const HWND extra =
        dialog.FieldOfClass(L"Edit") == dialog.Field(u"Name") ? dialog.Field(u"Extras") : nullptr;
    SetFocus(extra);
    form_.extras.set_visible(false);
    form_.accept.set_enabled(false);
    user_.Then([&, dialog, extra] {
      EXPECT_FALSE(IsWindowVisible(extra));
      EXPECT_NE(GetFocus(), extra);
      EXPECT_FALSE(dialog.IsUsable(u"Accept"));
      form_.extras.set_visible(true);
      form_.extra.SetFocus();  // visible since this very moment
      EXPECT_EQ(GetFocus(), extra);
      dialog.Press(u"Leave");
    });
  });
  forms_.ShowModal(form_);
  EXPECT_FALSE(form_.accepted);
}

TEST_F(Win32FormsTest, FocusPassedOnInAFocusEventArrives) {
  form_.notes.on_got_focus = [this] { form_.accept.SetFocus(); };
  user_.Expect(u"Sample", [&](const Dialog& dialog) {
    SetFocus(dialog.Field(u"Notes"));
    user_.Then([dialog] {
      EXPECT_EQ(GetFocus(), dialog.Button(u"Accept"));
      dialog.Press(u"Leave");
    });
  });
  forms_.ShowModal(form_);
}

TEST_F(Win32FormsTest, ModalityCoversTheHostAndNests) {
  user_.Expect(u"Sample", [&](const Dialog& outer) {
    EXPECT_FALSE(IsWindowEnabled(host_));
    EXPECT_EQ(GetWindow(outer.window(), GW_OWNER), host_);
    user_.Expect(u"Question", [&](const Dialog& question) {
      EXPECT_FALSE(IsWindowEnabled(outer.window()));
      EXPECT_EQ(question.Message(), u"Go on?");
      SendMessageW(question.window(), WM_COMMAND, IDYES, 0);
    });
    EXPECT_EQ(forms_.MsgBox(u"Go on?", kYesNo, u"Question"), Answer::kYes);
    EXPECT_TRUE(IsWindowEnabled(outer.window()));
    user_.Expect(u"Ask", [&](const Dialog& ask) {
      EXPECT_EQ(GetWindow(ask.window(), GW_OWNER), outer.window());
      ask.TypeInto(ask.FieldOfClass(L"Edit"), u"typed");
      ask.Press(u"OK");
    });
    EXPECT_EQ(forms_.InputBox(u"What & why?", u"Ask", u"old"), u"typed");
    EXPECT_FALSE(IsWindowEnabled(host_)) << "still under the outer dialog";
    outer.Press(u"Leave");
  });
  forms_.ShowModal(form_);
}

TEST_F(Win32FormsTest, AFormEndsWithTheHostsWindow) {
  const HWND book = CreateWindowExW(0, L"Static", L"Book", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 400, 300,
                                    nullptr, nullptr, nullptr, nullptr);
  Win32Forms forms([book] { return book; });
  user_.Expect(u"Sample", [&](const Dialog&) {
    EXPECT_FALSE(IsWindowEnabled(host_));
    DestroyWindow(book);
  });
  forms.ShowModal(form_);
  EXPECT_FALSE(form_.loaded());
}

TEST_F(Win32FormsTest, AListThatGoesBackToItsFormerChoiceTakesTheFormWithIt) {
  form_.choice.set_list_index(1);
  user_.Expect(u"Sample", [&](const Dialog& dialog) {
    const HWND choice = dialog.Field(u"Choice");
    SendMessageW(choice, CB_SETCURSEL, 0, 0);  // tells nobody
    const WPARAM closed = MAKEWPARAM(GetDlgCtrlID(choice), CBN_CLOSEUP);
    SendMessageW(dialog.window(), WM_COMMAND, closed, reinterpret_cast<LPARAM>(choice));
    user_.Then([&, dialog] {
      EXPECT_EQ(form_.choice.list_index(), 0);
      dialog.Press(u"Leave");
    });
  });
  forms_.ShowModal(form_);
}

TEST_F(Win32FormsTest, AnItemMayBeChosenAgain) {
  int clicks = 0;
  form_.choice.set_list_index(0);
  form_.choice.on_click = [&] { ++clicks; };
  user_.Expect(u"Sample", [&](const Dialog& dialog) {
    const HWND choice = dialog.Field(u"Choice");
    SetFocus(choice);
    SendMessageW(choice, CB_SHOWDROPDOWN, TRUE, 0);
    dialog.PressKey(VK_RETURN);
    user_.Then([&, dialog] {  // the list is closed; the form learns of it now
      user_.Then([&, dialog] {
        EXPECT_EQ(clicks, 1);
        dialog.Choose(u"Choice", u"Second");
        EXPECT_EQ(clicks, 2);
        dialog.Press(u"Leave");
      });
    });
  });
  forms_.ShowModal(form_);
  EXPECT_EQ(clicks, 2);
}

TEST_F(Win32FormsTest, CancelledInputAndClosedQuestionsGiveTheCancellingAnswer) {
  const auto escape = [](const Dialog& dialog) { SendMessageW(dialog.window(), WM_COMMAND, IDCANCEL, 0); };
  user_.Expect(u"Ask", escape);
  EXPECT_EQ(forms_.InputBox(u"Prompt", u"Ask", u"initial"), u"");
  user_.Expect(u"Sure", escape);
  EXPECT_EQ(forms_.MsgBox(u"Prompt", kOkCancel, u"Sure"), Answer::kCancel);
  user_.Expect(u"Note", escape);
  EXPECT_EQ(forms_.MsgBox(u"Prompt", kOkOnly, u"Note"), Answer::kOk);
}

TEST_F(Win32FormsTest, AProgressWindowTakesItsClicksDuringYieldsAndKeepsOthersFromTheirs) {
  user_.Expect(u"Sample", [&](const Dialog& dialog) { dialog.Press(u"Leave"); });
  forms_.Show(form_);
  EXPECT_FALSE(IsWindowEnabled(host_));
  while (form_.loaded()) {
    form_.name_label.set_caption(u"Row");
    forms_.Yield();
  }
  EXPECT_TRUE(IsWindowEnabled(host_));
}

TEST_F(Win32FormsTest, TextsThatChangeInALoopAreShownLastAndSeldom) {
  struct Counter {
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM first, LPARAM second, UINT_PTR,
                                      DWORD_PTR count) {
      if (message == WM_SETTEXT) ++*reinterpret_cast<int*>(count);
      return DefSubclassProc(window, message, first, second);
    }
  };
  user_.Expect(u"Sample", [](const Dialog&) {});
  forms_.Show(form_);
  forms_.Yield();
  const HWND dialog = GetActiveWindow();
  int shown = 0;
  SetWindowSubclass(GetWindow(dialog, GW_CHILD), &Counter::Procedure, 1, reinterpret_cast<DWORD_PTR>(&shown));
  const ULONGLONG start = GetTickCount64();
  for (int row = 1; row <= 20'000; ++row) {
    form_.name_label.set_caption(Text(static_cast<std::size_t>(row % 7 + 1), u'x'));
    forms_.Yield();
  }
  const auto elapsed = static_cast<int>(GetTickCount64() - start);
  EXPECT_LE(shown, elapsed / 50 + 4);
  form_.Unload();
}

TEST_F(Win32FormsTest, AnErrorThatLeavesAHandlerEndsTheFormAndReachesTheCaller) {
  form_.accept.on_click = [] { throw RuntimeError(91, u"Object variable or With block variable not set"); };
  user_.Expect(u"Sample", [](const Dialog& dialog) { dialog.Press(u"Accept"); });
  try {
    forms_.ShowModal(form_);
    FAIL();
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.number(), 91);
  }
  EXPECT_FALSE(form_.loaded());
}

TEST_F(Win32FormsTest, TheTimerTicksWhileTheFormIsShownAndNothingOverIt) {
  int ticks = 0;
  form_.timer.on_timer = [&] {
    if (++ticks == 2) form_.Unload();
  };
  form_.timer.set_interval(10);
  user_.Expect(u"Sample", [&](const Dialog& dialog) {
    for (const WPARAM foreign : {1, 100, 5000}) SendMessageW(dialog.window(), WM_TIMER, foreign, 0);
    user_.Expect(u"Ask", [&](const Dialog& ask) {
      const WPARAM own = 100 + form_.controls().size() - 1;
      SendMessageW(dialog.window(), WM_TIMER, own, 0);
      EXPECT_EQ(ticks, 0);
      ask.Press(u"OK");
    });
    forms_.InputBox(u"Prompt", u"Ask", u"");
  });
  forms_.ShowModal(form_);
  EXPECT_EQ(ticks, 2);
}

TEST_F(Win32FormsTest, AWindowMovedToADenserMonitorGrowsWithItsControls) {
  user_.Expect(u"Sample", [&](const Dialog& dialog) {
    RECT before{};
    GetWindowRect(dialog.Button(u"Accept"), &before);
    RECT suggested{10, 10, 600, 500};
    const UINT dpi = 2 * DpiOf(dialog.window());
    SendMessageW(dialog.window(), 0x02E0, MAKEWPARAM(dpi, dpi), reinterpret_cast<LPARAM>(&suggested));
    RECT after{};
    GetWindowRect(dialog.Button(u"Accept"), &after);
    EXPECT_GT(after.right - after.left, (before.right - before.left) * 3 / 2);
    RECT window{};
    GetWindowRect(dialog.window(), &window);
    EXPECT_EQ(window.left, suggested.left);
    dialog.Press(u"Leave");
  });
  forms_.ShowModal(form_);
}

TEST(WindowScope, FollowsTheResolutionAsTheOwnerDoes) {
  using Context = DPI_AWARENESS_CONTEXT;
  const auto enter = Windows10<Context WINAPI(Context)>("SetThreadDpiAwarenessContext");
  const auto current = Windows10<Context WINAPI()>("GetThreadDpiAwarenessContext");
  const auto kind = Windows10<int WINAPI(Context)>("GetAwarenessFromDpiAwarenessContext");
  const Context former = enter(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE);
  const HWND owner = CreateWindowExW(0, L"Static", L"Owner", WS_OVERLAPPEDWINDOW, 0, 0, 40, 30, nullptr,
                                     nullptr, nullptr, nullptr);
  enter(DPI_AWARENESS_CONTEXT_SYSTEM_AWARE);
  {
    const WindowScope scope(owner);
    EXPECT_EQ(kind(current()), kind(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE));
  }
  EXPECT_EQ(kind(current()), kind(DPI_AWARENESS_CONTEXT_SYSTEM_AWARE));
  enter(former);
  DestroyWindow(owner);
}

}  // namespace
}  // namespace quorvel::tests
