#include <benchmark/benchmark.h>

#include "gateway/url_encode.h"
#include "platform/code_page.h"
#include "preview/frmPreviewSMS.h"

namespace quorvel {
namespace {

// Units of a message as people write them: letters, blanks, some marks, a few accents.
Text Sample(std::size_t size) {
  constexpr TextView kPiece = u"D\u00E4r Ann, 20% off at Springfield & Co. until 3/1/2024! ";
  Text text;
  while (text.size() < size) text += kPiece;
  text.resize(size);
  return text;
}

void UrlEncode(benchmark::State& state) {
  const Text text = Sample(static_cast<std::size_t>(state.range(0)));
  for ([[maybe_unused]] const auto iteration : state) {
    benchmark::DoNotOptimize(UrlEncodeBytes(Windows1252().Encode(text)));
  }
  state.SetBytesProcessed(state.iterations() * state.range(0));
}
BENCHMARK(UrlEncode)->Arg(16)->Arg(1'024)->Arg(1'048'576);

// Opening the preview: the first message and the total of all.
void PreviewTotal(benchmark::State& state) {
  PreviewState preview;
  preview.PreviewMessages.assign(static_cast<std::size_t>(state.range(0)), Sample(150));
  preview.PreviewMobileNumbers.assign(static_cast<std::size_t>(state.range(0)), u"9876543210");
  for ([[maybe_unused]] const auto iteration : state) {
    frmPreviewSMS form(preview);
    form.Load();
    benchmark::DoNotOptimize(form.label_Total_SMSs.caption());
  }
}
BENCHMARK(PreviewTotal)->Arg(1'000)->Arg(32'767)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace quorvel
