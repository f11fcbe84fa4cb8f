#include "hosts/calc/document_frames.h"

#include <com/sun/star/frame/XFramesSupplier.hpp>

#include "hosts/calc/uno_properties.h"

namespace quorvel {

using css::uno::Reference;
using css::uno::UNO_QUERY;

Reference<css::frame::XModel> DocumentIn(const Reference<css::frame::XFrame>& frame) {
  const auto controller = frame->getController();
  if (!controller.is()) return {};
  return controller->getModel();
}

std::vector<Reference<css::frame::XFrame>> DocumentFrames(const Context& context,
                                                          const Reference<css::frame::XFrame>& frame) {
  const Reference<css::frame::XModel> document = DocumentIn(frame);
  if (!document.is()) return {frame};
  const auto desktop = CreateService<css::frame::XFramesSupplier>(context, "com.sun.star.frame.Desktop");
  const auto frames = desktop->getFrames();
  std::vector<Reference<css::frame::XFrame>> shown;
  for (sal_Int32 index = 0; index < frames->getCount(); ++index) {
    const Reference<css::frame::XFrame> other(frames->getByIndex(index), UNO_QUERY);
    if (other.is() && DocumentIn(other) == document) shown.push_back(other);
  }
  return shown;
}

}  // namespace quorvel
