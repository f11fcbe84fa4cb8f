#include "hosts/excel/control_window.h"

#include <algorithm>
#include <string>
#include <utility>

#include "hosts/excel/reading_order.h"
#include "hosts/excel/wide.h"
#include "hosts/excel/window_scope.h"

namespace quorvel {

namespace {

constexpr int kDropDownLines = 12;
constexpr DWORD kMostText = 0x7FFFFFFE;

struct WindowKind {
  const wchar_t* window_class = nullptr;
  DWORD style = 0;
  DWORD extended_style = 0;
};

const wchar_t* RichTextClass() {
  static const bool loaded = LoadLibraryW(L"Msftedit.dll") != nullptr;
  return loaded ? MSFTEDIT_CLASS : L"EDIT";
}

bool IsTextBox(const Control& control) {
  return control.kind() == ControlKind::kTextBox;
}

bool HasLines(const TextBox& box) {
  return box.style() == TextBox::Style::kMultiLine || box.style() == TextBox::Style::kRichText;
}

// A text to be read, such as an alert's, is no field: it stands on the dialog like a label.
bool IsMessage(const TextBox& box) {
  return box.style() == TextBox::Style::kMultiLine && box.read_only();
}

WindowKind KindOf(const TextBox& box) {
  const DWORD style = WS_TABSTOP | (box.read_only() ? ES_READONLY : 0);
  if (!HasLines(box)) {
    const DWORD hidden = box.style() == TextBox::Style::kPassword ? ES_PASSWORD : 0;
    return {L"EDIT", style | hidden | ES_AUTOHSCROLL, WS_EX_CLIENTEDGE};
  }
  constexpr DWORD kLines = ES_MULTILINE | ES_AUTOVSCROLL | WS_VSCROLL;
  if (!IsMessage(box)) return {RichTextClass(), style | kLines | ES_WANTRETURN | ES_NOHIDESEL | WS_BORDER};
  if (!StartsRightToLeft(box.text())) return {L"EDIT", style | kLines};
  return {L"EDIT", style | kLines | ES_RIGHT, WS_EX_RTLREADING | WS_EX_LEFTSCROLLBAR};
}

// Check boxes and option buttons do not check themselves: the form decides, and its state is shown. Each
// control is a group of its own: the arrow keys' way is the form window's.
WindowKind KindOf(const Control& control) {
  switch (control.kind()) {
    case ControlKind::kLabel:
      return {L"STATIC", SS_LEFT};
    case ControlKind::kTextBox:
      return KindOf(static_cast<const TextBox&>(control));
    case ControlKind::kButton: {
      const bool is_default = static_cast<const Button&>(control).role() == Button::Role::kDefault;
      return {L"BUTTON",
              WS_TABSTOP | BS_NOTIFY | static_cast<DWORD>(is_default ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON)};
    }
    case ControlKind::kCheckBox:
      return {L"BUTTON", WS_TABSTOP | BS_NOTIFY | BS_CHECKBOX};
    case ControlKind::kOptionButton:
      return {L"BUTTON", WS_TABSTOP | BS_NOTIFY | BS_RADIOBUTTON};
    case ControlKind::kComboBox: {
      const bool list = static_cast<const ComboBox&>(control).style() == ComboBox::Style::kList;
      return {L"COMBOBOX", WS_TABSTOP | WS_VSCROLL | CBS_AUTOHSCROLL |
                               static_cast<DWORD>(list ? CBS_DROPDOWNLIST : CBS_DROPDOWN)};
    }
    case ControlKind::kFrame:
      return {L"BUTTON", BS_GROUPBOX, WS_EX_TRANSPARENT};
    case ControlKind::kImage:
      return {L"STATIC", SS_ICON | SS_REALSIZECONTROL};
    case ControlKind::kProgressBar:
      return {PROGRESS_CLASSW};
    case ControlKind::kTimer:
      return {};
  }
  return {};
}

const wchar_t* IconName(Image::Icon icon) {
  switch (icon) {
    case Image::Icon::kCritical:
      return IDI_ERROR;
    case Image::Icon::kWarning:
      return IDI_WARNING;
    case Image::Icon::kInformation:
      return IDI_INFORMATION;
  }
  return IDI_APPLICATION;
}

// Of that resolution's size, the caller's to destroy.
HANDLE MakeIcon(Image::Icon icon, UINT dpi) {
  const int size = MulDiv(32, static_cast<int>(dpi), static_cast<int>(kStandardDpi));
  return CopyImage(LoadIconW(nullptr, IconName(icon)), IMAGE_ICON, size, size, LR_COPYFROMRESOURCE);
}

void SetIcon(HWND window, HANDLE icon) {
  const LRESULT former = SendMessageW(window, STM_SETICON, reinterpret_cast<WPARAM>(icon), 0);
  if (former != 0) DestroyIcon(reinterpret_cast<HICON>(former));
}

// Line ends as an edit window wants them. Shift and Enter make a rich text box begin a line with U+000B.
Text WithCrLf(const Text& text) {
  Text result;
  result.reserve(text.size());
  for (std::size_t at = 0; at < text.size(); ++at) {
    const char16_t unit = text[at];
    const bool pair = unit == u'\r' && at + 1 < text.size() && text[at + 1] == u'\n';
    if (pair) ++at;
    if (unit == u'\r' || unit == u'\n' || unit == u'\v') {
      result += kCrLf;
    } else {
      result += unit;
    }
  }
  return result;
}

// Plain text only, whatever is pasted.
void PrepareRichText(HWND window) {
  SendMessageW(window, EM_SETTEXTMODE, TM_PLAINTEXT, 0);
  SendMessageW(window, EM_EXLIMITTEXT, 0, kMostText);
  SendMessageW(window, EM_SETEVENTMASK, 0, ENM_CHANGE);
}

// Room between a rich text box's frame and its text.
void SetTextMargins(HWND window, UINT dpi) {
  RECT area{};
  GetClientRect(window, &area);
  InflateRect(&area, -MulDiv(3, static_cast<int>(dpi), static_cast<int>(kStandardDpi)),
              -MulDiv(1, static_cast<int>(dpi), static_cast<int>(kStandardDpi)));
  SendMessageW(window, EM_SETRECT, 0, reinterpret_cast<LPARAM>(&area));
}

LONG LineHeight(HWND window) {
  TEXTMETRICW metrics{};
  const HDC screen = GetDC(window);
  const HGDIOBJ former =
      SelectObject(screen, reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0)));
  GetTextMetricsW(screen, &metrics);
  SelectObject(screen, former);
  ReleaseDC(window, screen);
  return metrics.tmHeight;
}

// In the middle of its place; with a scroll bar only when it needs one.
void PlaceMessage(HWND window) {
  ShowScrollBar(window, SB_VERT, FALSE);
  SendMessageW(window, EM_SETRECT, 0, 0);
  RECT area{};
  GetClientRect(window, &area);
  const LONG height = LineHeight(window) * static_cast<LONG>(SendMessageW(window, EM_GETLINECOUNT, 0, 0));
  if (height > area.bottom) {
    ShowScrollBar(window, SB_VERT, TRUE);
    return;
  }
  area.top = (area.bottom - height) / 2;
  SendMessageW(window, EM_SETRECT, 0, reinterpret_cast<LPARAM>(&area));
}

// All paragraphs of a rich text box; its selection stays.
void DirectRichText(HWND window, bool right_to_left) {
  CHARRANGE selection{};
  CHARRANGE all{0, -1};
  PARAFORMAT2 format{};
  format.cbSize = sizeof(format);
  format.dwMask = PFM_RTLPARA | PFM_ALIGNMENT;
  format.wEffects = right_to_left ? PFE_RTLPARA : 0;
  format.wAlignment = right_to_left ? PFA_RIGHT : PFA_LEFT;
  SendMessageW(window, EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&selection));
  SendMessageW(window, EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&all));
  SendMessageW(window, EM_SETPARAFORMAT, 0, reinterpret_cast<LPARAM>(&format));
  SendMessageW(window, EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&selection));
}

int WidestItem(HWND window, const std::vector<Text>& items, HFONT font) {
  const HDC screen = GetDC(window);
  const HGDIOBJ former = SelectObject(screen, font);
  LONG widest = 0;
  for (const Text& item : items) {
    SIZE size{};
    GetTextExtentPoint32W(screen, Wide(item), static_cast<int>(item.size()), &size);
    widest = std::max(widest, size.cx);
  }
  SelectObject(screen, former);
  ReleaseDC(window, screen);
  return static_cast<int>(widest);
}

}  // namespace

ControlWindow::ControlWindow(Control& control, HWND dialog, int id)
    : control_(&control), dialog_(dialog), id_(id) {
  const WindowKind kind = KindOf(control);
  if (kind.window_class == nullptr) return;
  handle_ =
      CreateWindowExW(kind.extended_style, kind.window_class, nullptr, WS_CHILD | WS_GROUP | kind.style, 0, 0,
                      0, 0, dialog, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), ThisModule(), nullptr);
  if (!IsTextBox(control)) return;
  if (IsRichText()) {
    PrepareRichText(handle_);
  } else {
    SendMessageW(handle_, EM_SETLIMITTEXT, 0, 0);
  }
}

bool ControlWindow::HasLines() const {
  return IsTextBox(*control_) && quorvel::HasLines(static_cast<const TextBox&>(*control_));
}

bool ControlWindow::IsRichText() const {
  return HasLines() && !IsMessage(static_cast<const TextBox&>(*control_));
}

void ControlWindow::Place(const DialogMetrics& metrics) {
  if (handle_ == nullptr) return;
  SendMessageW(handle_, WM_SETFONT, reinterpret_cast<WPARAM>(metrics.font()), FALSE);
  RECT place = metrics.Pixels(control_->bounds());
  if (control_->kind() == ControlKind::kImage) {
    SetIcon(handle_, MakeIcon(static_cast<const Image*>(control_)->icon(), metrics.dpi()));
  }
  if (control_->kind() == ControlKind::kComboBox ||
      (control_->kind() == ControlKind::kTextBox && !HasLines())) {
    // A line of text stands at the top of its box: the box is as high as the line and in the middle of its
    // bounds.
    place.top += (place.bottom - place.top - metrics.FieldHeight()) / 2;
    place.bottom = place.top + metrics.FieldHeight();
  }
  if (control_->kind() == ControlKind::kComboBox) {  // the height includes the list that drops down
    const LRESULT line = SendMessageW(handle_, CB_GETITEMHEIGHT, 0, 0);
    place.bottom += static_cast<LONG>(line) * kDropDownLines;
  }
  SetWindowPos(handle_, nullptr, static_cast<int>(place.left), static_cast<int>(place.top),
               static_cast<int>(place.right - place.left), static_cast<int>(place.bottom - place.top),
               SWP_NOZORDER | SWP_NOACTIVATE);
  if (IsRichText()) {
    SetTextMargins(handle_, metrics.dpi());
  } else if (HasLines()) {
    PlaceMessage(handle_);
  }
}

void ControlWindow::ShowState() const {
  if (handle_ == nullptr) return;
  const LONG_PTR style = GetWindowLongPtrW(handle_, GWL_STYLE);
  const bool shown = (style & WS_VISIBLE) != 0;
  const bool enabled = (style & WS_DISABLED) == 0;
  const bool usable = control_->usable();
  const bool had_focus = GetFocus() == handle_;
  // A window that is hidden or disabled keeps the focus; the keyboard would be lost with it.
  if (had_focus && !usable) SendMessageW(dialog_, WM_NEXTDLGCTL, 0, FALSE);
  const bool enable = control_->enabled() && (control_->frame() == nullptr || control_->frame()->enabled());
  if (enabled != enable) EnableWindow(handle_, enable ? TRUE : FALSE);
  if (shown != control_->shown()) ShowWindow(handle_, control_->shown() ? SW_SHOWNA : SW_HIDE);
}

bool ControlWindow::CanShow(Property property) const {
  const ControlKind kind = control_->kind();
  const bool combo = kind == ControlKind::kComboBox;
  switch (property) {
    case Property::kCaption:
      return handle_ != nullptr && !combo && kind != ControlKind::kTextBox && kind != ControlKind::kImage;
    case Property::kText:
      return kind == ControlKind::kTextBox ||
             (combo && static_cast<const ComboBox*>(control_)->style() == ComboBox::Style::kEditable);
    case Property::kSelectAll:
      return kind == ControlKind::kTextBox;
    case Property::kValue:
      return kind == ControlKind::kCheckBox || kind == ControlKind::kOptionButton ||
             kind == ControlKind::kProgressBar;
    case Property::kItems:
    case Property::kListIndex:
      return combo;
    case Property::kTimer:
      return kind == ControlKind::kTimer;
    case Property::kBounds:
    case Property::kVisible:
    case Property::kEnabled:
      return handle_ != nullptr;
  }
  return false;
}

void ControlWindow::Show(Property property, const DialogMetrics& metrics) {
  switch (property) {
    case Property::kCaption:
      return ShowCaption();
    case Property::kBounds:
      return Place(metrics);
    case Property::kText:
      return ShowText();
    case Property::kSelectAll:
      SendMessageW(handle_, EM_SETSEL, 0, -1);
      return;
    case Property::kValue:
      return ShowValue();
    case Property::kItems:
      return ShowItems(metrics);
    case Property::kListIndex:
      return ShowListIndex();
    case Property::kTimer:
      return ShowTimer();
    case Property::kVisible:
    case Property::kEnabled:
      return ShowState();
  }
}

void ControlWindow::Release() const {
  if (control_->kind() == ControlKind::kImage) SetIcon(handle_, nullptr);
}

Text ControlWindow::ReadText() const {
  std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(handle_)) + 1, L'\0');
  text.resize(static_cast<std::size_t>(GetWindowTextW(handle_, text.data(), static_cast<int>(text.size()))));
  return HasLines() ? WithCrLf(FromWide(text)) : FromWide(text);
}

void ControlWindow::ShowCaption() const {
  SetWindowTextW(handle_, Wide(control_->caption()));
}

void ControlWindow::ShowText() {
  const bool box = control_->kind() == ControlKind::kTextBox;
  const Text& text =
      box ? static_cast<const TextBox*>(control_)->text() : static_cast<const ComboBox*>(control_)->text();
  const Text shown = HasLines() ? WithCrLf(text) : text;
  if (ReadText() != shown) SetWindowTextW(handle_, Wide(shown));
  if (IsRichText()) {
    ShowDirection(shown);
  } else if (HasLines()) {
    PlaceMessage(handle_);
  }
}

void ControlWindow::ShowDirection(const Text& text) {
  if (!IsRichText()) return;
  const bool right_to_left = StartsRightToLeft(text);
  if (std::exchange(right_to_left_, right_to_left) != right_to_left) DirectRichText(handle_, right_to_left);
}

void ControlWindow::ShowValue() const {
  switch (control_->kind()) {
    case ControlKind::kCheckBox:
      SendMessageW(handle_, BM_SETCHECK,
                   static_cast<const CheckBox*>(control_)->value() ? BST_CHECKED : BST_UNCHECKED, 0);
      return;
    case ControlKind::kOptionButton:
      SendMessageW(handle_, BM_SETCHECK,
                   static_cast<const OptionButton*>(control_)->value() ? BST_CHECKED : BST_UNCHECKED, 0);
      // The window takes itself out of the Tab order when it is unchecked; with nothing chosen, or with other
      // controls in between, the keyboard could not reach it.
      SetWindowLongPtrW(handle_, GWL_STYLE, GetWindowLongPtrW(handle_, GWL_STYLE) | WS_TABSTOP);
      return;
    default:
      SendMessageW(handle_, PBM_SETPOS,
                   static_cast<WPARAM>(static_cast<const ProgressBar*>(control_)->value()), 0);
  }
}

void ControlWindow::ShowItems(const DialogMetrics& metrics) {
  const auto& combo = static_cast<const ComboBox&>(*control_);
  SendMessageW(handle_, WM_SETREDRAW, FALSE, 0);
  SendMessageW(handle_, CB_RESETCONTENT, 0, 0);
  for (const Text& item : combo.items()) {
    SendMessageW(handle_, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(Wide(item)));
  }
  const int widest = WidestItem(handle_, combo.items(), metrics.font());
  const int scroll_bar = GetSystemMetrics(SM_CXVSCROLL) + 4 * GetSystemMetrics(SM_CXEDGE);
  SendMessageW(handle_, CB_SETDROPPEDWIDTH, static_cast<WPARAM>(widest) + static_cast<WPARAM>(scroll_bar), 0);
  ShowListIndex();
  SendMessageW(handle_, WM_SETREDRAW, TRUE, 0);
  InvalidateRect(handle_, nullptr, TRUE);
}

void ControlWindow::ShowListIndex() {
  const auto& combo = static_cast<const ComboBox&>(*control_);
  if (SendMessageW(handle_, CB_GETCURSEL, 0, 0) != combo.list_index()) {
    SendMessageW(handle_, CB_SETCURSEL, static_cast<WPARAM>(combo.list_index()), 0);
  }
  if (combo.style() == ComboBox::Style::kEditable && combo.list_index() < 0) ShowText();
}

void ControlWindow::ShowTimer() const {
  const int interval = static_cast<const Timer*>(control_)->interval();
  if (interval > 0) {
    SetTimer(dialog_, static_cast<UINT_PTR>(id_), static_cast<UINT>(interval), nullptr);
  } else {
    KillTimer(dialog_, static_cast<UINT_PTR>(id_));
  }
}

}  // namespace quorvel
