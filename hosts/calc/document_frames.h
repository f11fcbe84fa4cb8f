#pragma once

#include <com/sun/star/frame/XFrame.hpp>
#include <com/sun/star/frame/XModel.hpp>
#include <vector>

#include "hosts/calc/main_thread.h"

namespace quorvel {

// The windows that show the document in `frame`; `frame` alone when it shows none. Throws UNO exceptions.
[[nodiscard]] std::vector<css::uno::Reference<css::frame::XFrame>> DocumentFrames(
    const Context& context, const css::uno::Reference<css::frame::XFrame>& frame);

// Null when the window shows none.
[[nodiscard]] css::uno::Reference<css::frame::XModel> DocumentIn(
    const css::uno::Reference<css::frame::XFrame>& frame);

}  // namespace quorvel
