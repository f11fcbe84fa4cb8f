#include "hosts/calc/control_models.h"

#include <array>
#include <vector>

#include "hosts/calc/uno_properties.h"

namespace quorvel {

namespace {

using css::uno::Sequence;
using rtl::OUString;

constexpr sal_Int16 kPasswordMark = 0x2022;
constexpr sal_Int16 kDropDownLines = 12;
constexpr int kOneLine = 12;  // dialog units: what is higher has room for a second line
constexpr sal_Int16 kCancelButton = 2;
constexpr sal_Int16 kScaleNone = 0;
constexpr sal_Int16 kNoBorder = 0;

Sequence<OUString> Items(const ComboBox& combo) {
  Sequence<OUString> items(combo.list_count());
  OUString* item = items.getArray();
  for (const Text& text : combo.items()) *item++ = ToUno(text);
  return items;
}

void WriteChoice(const ComboBox& combo, const ControlModel& model) {
  if (combo.style() == ComboBox::Style::kEditable) {
    SetProperty(model, "Text", ToUno(combo.text()));
    return;
  }
  Sequence<sal_Int16> chosen(combo.list_index() < 0 ? 0 : 1);
  if (chosen.hasElements()) *chosen.getArray() = static_cast<sal_Int16>(combo.list_index());
  SetProperty(model, "SelectedItems", chosen);
}

void WriteValue(const Control& control, const ControlModel& model) {
  switch (control.kind()) {
    case ControlKind::kCheckBox:
      return SetProperty(model, "State", sal_Int16{static_cast<const CheckBox&>(control).value()});
    case ControlKind::kOptionButton:
      return SetProperty(model, "State", sal_Int16{static_cast<const OptionButton&>(control).value()});
    case ControlKind::kProgressBar:
      return SetProperty(model, "ProgressValue", sal_Int32{static_cast<const ProgressBar&>(control).value()});
    default:
      return;
  }
}

void WriteBounds(const Bounds& bounds, const ControlModel& model) {
  SetProperty(model, "PositionX", sal_Int32{bounds.x});
  SetProperty(model, "PositionY", sal_Int32{bounds.y});
  SetProperty(model, "Width", sal_Int32{bounds.width});
  SetProperty(model, "Height", sal_Int32{bounds.height});
}

void FillTextBox(const TextBox& box, const ControlModel& model) {
  const bool lines = box.style() == TextBox::Style::kMultiLine || box.style() == TextBox::Style::kRichText;
  if (lines) {
    SetProperty(model, "MultiLine", true);
    SetProperty(model, "AutoVScroll", true);
    SetProperty(model, "Border", kNoBorder);
  }
  if (box.style() == TextBox::Style::kPassword) SetProperty(model, "EchoChar", kPasswordMark);
  SetProperty(model, "ReadOnly", box.read_only());
  SetProperty(model, "Text", ToUno(ShownText(box.text())));
}

void FillImage(const Image& image, const ControlModel& model) {
  constexpr std::array kPictures = {"errorbox", "warningbox", "infobox"};  // by Image::Icon
  const std::string_view name = kPictures.at(static_cast<std::size_t>(image.icon()));
  SetProperty(model, "ImageURL", OUString("private:graphicrepository/vcl/res/" + ToUno(name) + ".png"));
  SetProperty(model, "ScaleMode", kScaleNone);
  SetProperty(model, "Border", kNoBorder);
  SetProperty(model, "Tabstop", false);
}

void FillButton(const Button& button, const ControlModel& model) {
  if (button.role() == Button::Role::kDefault) SetProperty(model, "DefaultButton", true);
  if (button.role() == Button::Role::kCancel) SetProperty(model, "PushButtonType", kCancelButton);
}

void FillCombo(const ComboBox& combo, const ControlModel& model) {
  SetProperty(model, "Dropdown", true);
  SetProperty(model, "LineCount", kDropDownLines);
  if (combo.style() == ComboBox::Style::kEditable) SetProperty(model, "Autocomplete", false);
  SetProperty(model, "StringItemList", Items(combo));
  WriteChoice(combo, model);
}

bool HasCaption(const Control& control) {
  switch (control.kind()) {
    case ControlKind::kLabel:
    case ControlKind::kButton:
    case ControlKind::kCheckBox:
    case ControlKind::kOptionButton:
    case ControlKind::kFrame:
      return true;
    default:
      return false;
  }
}

void FillKind(const Control& control, const ControlModel& model) {
  switch (control.kind()) {
    case ControlKind::kLabel:
      return SetProperty(model, "MultiLine", control.bounds().height > kOneLine);
    case ControlKind::kTextBox:
      return FillTextBox(static_cast<const TextBox&>(control), model);
    case ControlKind::kButton:
      return FillButton(static_cast<const Button&>(control), model);
    case ControlKind::kComboBox:
      return FillCombo(static_cast<const ComboBox&>(control), model);
    case ControlKind::kImage:
      return FillImage(static_cast<const Image&>(control), model);
    case ControlKind::kOptionButton:
      SetProperty(model, "GroupName",
                  ToUno(control.frame() == nullptr ? std::string_view("form") : control.frame()->name()));
      return WriteValue(control, model);
    default:
      return WriteValue(control, model);
  }
}

Text WithLineEnds(TextView text, TextView line_end) {
  Text result;
  result.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t unit = text[i];
    if (unit != u'\r' && unit != u'\n') {
      result.push_back(unit);
      continue;
    }
    if (unit == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') ++i;
    result += line_end;
  }
  return result;
}

}  // namespace

OUString ModelService(const Control& control) {
  const auto service = [](std::string_view kind) {
    return OUString("com.sun.star.awt.UnoControl" + ToUno(kind) + "Model");
  };
  switch (control.kind()) {
    case ControlKind::kLabel:
      return service("FixedText");
    case ControlKind::kTextBox:
      return service("Edit");
    case ControlKind::kButton:
      return service("Button");
    case ControlKind::kCheckBox:
      return service("CheckBox");
    case ControlKind::kOptionButton:
      return service("RadioButton");
    case ControlKind::kComboBox:
      return service(static_cast<const ComboBox&>(control).style() == ComboBox::Style::kList ? "ListBox"
                                                                                             : "ComboBox");
    case ControlKind::kFrame:
      return control.caption().empty() ? OUString() : service("GroupBox");
    case ControlKind::kImage:
      return service("ImageControl");
    case ControlKind::kProgressBar:
      return service("ProgressBar");
    case ControlKind::kTimer:
      return {};
  }
  return {};
}

void FillModel(const Control& control, int tab_index, const ControlModel& model) {
  WriteBounds(control.bounds(), model);
  SetProperty(model, "TabIndex", static_cast<sal_Int16>(tab_index));
  FillKind(control, model);
  for (const Property property : {Property::kCaption, Property::kVisible, Property::kEnabled}) {
    UpdateModel(control, property, model);
  }
}

void UpdateModel(const Control& control, Property property, const ControlModel& model) {
  switch (property) {
    case Property::kCaption:
      if (HasCaption(control)) SetProperty(model, "Label", ToUno(Mnemonic(control.caption())));
      return;
    case Property::kVisible:
      return SetProperty(model, "EnableVisible", control.shown());
    case Property::kEnabled:
      return SetProperty(model, "Enabled",
                         control.enabled() && (control.frame() == nullptr || control.frame()->enabled()));
    case Property::kBounds:
      return WriteBounds(control.bounds(), model);
    case Property::kText:
      if (control.kind() == ControlKind::kTextBox) {
        SetProperty(model, "Text", ToUno(ShownText(static_cast<const TextBox&>(control).text())));
      } else {
        WriteChoice(static_cast<const ComboBox&>(control), model);
      }
      return;
    case Property::kValue:
      return WriteValue(control, model);
    case Property::kItems:
      SetProperty(model, "StringItemList", Items(static_cast<const ComboBox&>(control)));
      return WriteChoice(static_cast<const ComboBox&>(control), model);
    case Property::kListIndex:
      return WriteChoice(static_cast<const ComboBox&>(control), model);
    case Property::kSelectAll:
    case Property::kTimer:
      return;
  }
}

Text Mnemonic(TextView caption) {
  Text result;
  result.reserve(caption.size());
  for (std::size_t i = 0; i < caption.size(); ++i) {
    const bool literal = caption[i] == u'&' && i + 1 < caption.size() && caption[i + 1] == u'&';
    if (literal) {
      ++i;
      result.push_back(u'&');
    } else if (caption[i] == u'~') {
      result += u"~~";
    } else {
      result.push_back(caption[i] == u'&' ? u'~' : caption[i]);
    }
  }
  return result;
}

Text TypedText(TextView text) {
  return WithLineEnds(text, kCrLf);
}

Text ShownText(TextView text) {
  return WithLineEnds(text, u"\n");
}

}  // namespace quorvel
