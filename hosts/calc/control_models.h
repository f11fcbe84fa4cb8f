#pragma once

#include <com/sun/star/beans/XPropertySet.hpp>

#include "hosts/calc/uno_text.h"
#include "platform/control.h"

namespace quorvel {

// How the form's controls look in the toolkit: each control's model and the model's properties.
using ControlModel = css::uno::Reference<css::beans::XPropertySet>;

// The toolkit's model service for the control; empty for a kind that shows nothing (a timer, a frame
// without a caption).
[[nodiscard]] rtl::OUString ModelService(const Control& control);

// Everything that a new model needs. `tab_index` counts from 0 in Tab order.
void FillModel(const Control& control, int tab_index, const ControlModel& model);

// Writes again what `property` says. kSelectAll and kTimer are no model's business and are ignored.
void UpdateModel(const Control& control, Property property, const ControlModel& model);

// A caption in the toolkit's notation: "&" before the access key becomes "~".
[[nodiscard]] Text Mnemonic(TextView caption);

// What the user typed, with the line ends that the core knows: CR LF.
[[nodiscard]] Text TypedText(TextView text);
// And the other way round, for the toolkit: LF.
[[nodiscard]] Text ShownText(TextView text);

}  // namespace quorvel
