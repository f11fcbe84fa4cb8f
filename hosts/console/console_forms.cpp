#include "hosts/console/console_forms.h"

#include "addin/common/AlertBox.h"
#include "addin/common/frmDisplay.h"
#include "hosts/console/interrupts.h"

namespace quorvel {

namespace {

constexpr int kButtonsMask = 7;
// There is nobody to edit them: the command would have to be given again.
constexpr TextView kEditProxyQuestion = u"Do You Want To Edit Proxy Settings?";

struct Buttons {
  Answer go_on;
  Answer cancel;
};

Buttons ButtonsOf(int style) {
  if ((style & kButtonsMask) == kYesNo) return {Answer::kYes, Answer::kNo};
  return {Answer::kOk, Answer::kCancel};
}

bool MeansYes(const std::string& line) {
  return line == "y" || line == "Y" || line == "yes" || line == "Yes" || line == "YES";
}

}  // namespace

ConsoleForms::ConsoleForms(const World& world) : world_(world), progress_line_(world.terminal) {
  On<AlertBox>([this](AlertBox& box) {
    Message(box.caption(), box.Text1.text());
    box.btnOk.UserPress();
  });
}

void ConsoleForms::Message(TextView title, TextView text) {
  progress_line_.Clear();
  if (!muted_) world_.output.Show(title, text);
}

void ConsoleForms::ShowModal(Form& form) {
  progress_line_.Clear();
  scripts_.Play(form);
}

void ConsoleForms::Show(Form& form) {
  form.Load();
  open_.Add(form);
}

// The answer to a question that was shown as a message, unless messages are kept for the end.
std::optional<std::string> ConsoleForms::Ask(TextView title, TextView question, std::string_view prompt) {
  const bool shown = !world_.output.json();
  const std::string whole = shown ? "" : Printable(title) + ": " + Printable(question) + "\n";
  std::optional<std::string> line = world_.terminal.Ask(whole + std::string(prompt));
  if (!line) unanswered_ = true;
  return line;
}

bool ConsoleForms::Confirm(TextView title, TextView question) {
  Message(title, question);
  if (world_.yes) return true;
  const auto line = Ask(title, question, "Go on? [y/N] ");
  return line && MeansYes(*line);
}

Answer ConsoleForms::MsgBox(TextView prompt, int style, TextView title) {
  if ((style & kButtonsMask) == kOkOnly) {
    Message(title, prompt);
    return Answer::kOk;
  }
  const Buttons buttons = ButtonsOf(style);
  if (prompt.ends_with(kEditProxyQuestion)) {
    Message(title, prompt);
    return buttons.cancel;
  }
  return Confirm(title, prompt) ? buttons.go_on : buttons.cancel;
}

Text ConsoleForms::InputBox(TextView prompt, TextView title, TextView /*initial*/) {
  if (input_) return *std::exchange(input_, std::nullopt);
  Message(title, prompt);
  const auto line = Ask(title, prompt, "> ");
  return line ? FromUtf8(*line) : Text();
}

std::optional<Text> ConsoleForms::AskSecret(TextView prompt) {
  progress_line_.Clear();
  const auto line = world_.terminal.AskSecret(Printable(prompt));
  if (line) return FromUtf8(*line);
  unanswered_ = true;
  return std::nullopt;
}

void ConsoleForms::Yield() {
  if (PendingInterrupts() > 0) ObeyInterrupt();
  if (progress_line_.IsDue(world_.clock.Ticks())) ShowProgress();
}

void ConsoleForms::ObeyInterrupt() {
  frmDisplay* const display = open_.Find<frmDisplay>();
  if (display == nullptr) throw Interrupted();
  if (!display->Cancel_Process.usable()) return;
  ClearInterrupts();
  cancelled_ = true;
  display->Cancel_Process.UserPress();
}

bool ConsoleForms::WantsToGiveUp() {
  const int interrupts = PendingInterrupts();
  if (interrupts == 0) return false;
  if (open_.Find<frmDisplay>() == nullptr || interrupts > 1) return true;
  if (!warned_)
    Message(u"quorvel",
            u"The messages are on their way. Press Ctrl-C again to give up waiting for the answer.");
  warned_ = true;
  return false;
}

void ConsoleForms::ShowProgress() {
  const frmDisplay* const display = open_.Find<frmDisplay>();
  if (display == nullptr) {
    progress_line_.Clear();
  } else {
    progress_line_.Show(display->lblProgress.caption(), world_.clock.Ticks());
  }
}

}  // namespace quorvel
