#include "hosts/excel/excel_command_bars.h"

#include <atomic>

#include "hosts/excel/face_clipboard.h"
#include "platform/numbers.h"
#include "platform/runtime_error.h"

namespace quorvel {

namespace {

// Controls of equal tag share their click event, so each gets a tag that no other has: not in this load of
// the add-in, and not those that an earlier load in the same host session left behind.
Text UniqueTag() {
  static std::atomic<std::int32_t> serial = 0;
  LARGE_INTEGER now{};
  QueryPerformanceCounter(&now);
  return u"Quorvel." + NumberToText(static_cast<double>(now.QuadPart)) + u"." + NumberToText(++serial);
}

}  // namespace

int ExcelBarControls::Count() {
  return controls_.Get(L"Count").ToLong();
}

std::unique_ptr<BarControl> ExcelBarControls::Add(const NewBarControl& control) {
  const Variant before = control.before > 0 ? Variant(control.before) : Variant::Missing();
  const AutomationObject added =
      controls_.GetChild(L"Add", {Variant(static_cast<std::int32_t>(control.type)), Variant::Missing(),
                                  Variant::Missing(), before, Variant(true)});
  added.Put(L"Tag", Variant(UniqueTag()));
  return std::make_unique<ExcelBarControl>(added, owner_);
}

Text ExcelBarControl::Caption() {
  return control_.Get(L"Caption").ToText();
}

void ExcelBarControl::SetCaption(TextView caption) {
  control_.Put(L"Caption", Variant(caption));
}

void ExcelBarControl::SetStyle(int style) {
  control_.Put(L"Style", Variant(style));
}

void ExcelBarControl::SetFaceId(int id) {
  control_.Put(L"FaceId", Variant(id));
}

void ExcelBarControl::PasteFace(const Face& face) {
  const FaceClipboard clipboard(face);
  control_.Call(L"PasteFace");
}

void ExcelBarControl::SetBeginGroup(bool begin) {
  control_.Put(L"BeginGroup", Variant(begin));
}

void ExcelBarControl::SetVisible(bool visible) {
  control_.Put(L"Visible", Variant(visible));
}

void ExcelBarControl::SetEnabled(bool enabled) {
  control_.Put(L"Enabled", Variant(enabled));
}

void ExcelBarControl::OnClick(std::function<void()> handler) {
  events_.reset();
  events_.emplace(control_.get(), [owner = owner_, handler = std::move(handler)] {
    const std::shared_ptr<void> keep = owner();
    handler();
  });
}

void ExcelBarControl::Delete() {
  control_.Call(L"Delete");
}

BarControls& ExcelBarControl::Children() {
  if (!children_) children_.emplace(control_.GetChild(L"Controls"), owner_);
  return *children_;
}

void ExcelCommandBar::SetVisible(bool visible) {
  bar_.Put(L"Visible", Variant(visible));
}

std::unique_ptr<BarControl> ExcelCommandBar::FindControl(BarControlType type) {
  AutomationObject found = bar_.GetChild(L"FindControl", {Variant(static_cast<std::int32_t>(type))});
  if (found.IsNothing()) return nullptr;
  return std::make_unique<ExcelBarControl>(std::move(found), owner_);
}

std::unique_ptr<CommandBar> ExcelCommandBars::Add(TextView name) {
  const AutomationObject bars = application_.GetChild(L"CommandBars");
  return std::make_unique<ExcelCommandBar>(
      bars.GetChild(L"Add", {Variant(name), Variant::Missing(), Variant::Missing(), Variant(true)}), owner_);
}

std::unique_ptr<CommandBar> ExcelCommandBars::MenuBar() {
  return std::make_unique<ExcelCommandBar>(
      application_.GetChild(L"CommandBars").GetChild(L"Item", {Variant(std::int32_t{1})}), owner_);
}

}  // namespace quorvel
