// Command bars over the stand-in's, and the clipboard's way there and back.

#include <gtest/gtest.h>

#include <cstring>

#include "hosts/excel/excel_command_bars.h"
#include "hosts/excel/face_clipboard.h"
#include "tests/contracts/command_bars_contract.h"
#include "tests/excel/application.h"

namespace quorvel::tests {
namespace {

constexpr char kFormerText[] = "what the user had copied";

void CopyAsUser() {
  const HGLOBAL text = GlobalAlloc(GMEM_MOVEABLE, sizeof(kFormerText));
  std::memcpy(GlobalLock(text), kFormerText, sizeof(kFormerText));
  GlobalUnlock(text);
  const HWND owner =
      CreateWindowExW(0, L"Static", nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
  OpenClipboard(owner);
  EmptyClipboard();
  SetClipboardData(CF_TEXT, text);
  SetClipboardData(CF_ENHMETAFILE, CloseEnhMetaFile(CreateEnhMetaFileW(nullptr, nullptr, nullptr, nullptr)));
  CloseClipboard();
  DestroyWindow(owner);
}

std::string ClipboardText() {
  OpenClipboard(nullptr);
  const HANDLE data = GetClipboardData(CF_TEXT);
  std::string text = data == nullptr ? "" : static_cast<const char*>(GlobalLock(data));
  if (data != nullptr) GlobalUnlock(data);
  CloseClipboard();
  return text;
}

struct ExcelHost {
  ExcelHost() { stand_in.bars->bars[0]->controls.erase(stand_in.bars->bars[0]->controls.begin() + 1); }

  CommandBars& bars() { return excel; }
  [[nodiscard]] Text Menus() const { return Captions(stand_in.bars->bars[0]->controls); }
  void Click(TextView caption) const {
    tests::Click(*stand_in.bars, Named(stand_in.bars->Find(u"SMS")->controls, caption));
  }

  StandIn stand_in;
  ExcelCommandBars excel{AutomationObject(stand_in.object()), [] { return nullptr; }};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Excel, CommandBarsContract, ExcelHost);

class ExcelCommandBarsTest : public testing::Test {
 protected:
  StandIn stand_in_;
  ExcelCommandBars bars_{AutomationObject(stand_in_.object()), [] { return nullptr; }};
};

TEST_F(ExcelCommandBarsTest, ControlsAreTemporaryAndLookAsTheyWereTold) {
  const auto bar = bars_.Add(u"SMS");
  bar->SetVisible(true);
  const auto button = bar->Controls().Add({});
  button->SetStyle(kIconAndCaption);
  button->SetBeginGroup(true);
  button->SetVisible(false);
  const auto data = stand_in_.bars->Find(u"SMS");
  EXPECT_TRUE(data->visible && data->temporary);
  EXPECT_TRUE(data->controls[0]->temporary && data->controls[0]->begins_group);
  EXPECT_FALSE(data->controls[0]->visible);
  EXPECT_EQ(data->controls[0]->style, 3);
}

TEST_F(ExcelCommandBarsTest, AnErrorInAClickStaysWithinTheAddin) {
  const auto bar = bars_.Add(u"SMS");
  const auto button = bar->Controls().Add({});
  button->OnClick([] { throw RuntimeError(1004, u"must not leave"); });
  const auto& controls = stand_in_.bars->Find(u"SMS")->controls;
  Click(*stand_in_.bars, controls[0]);
  EXPECT_EQ(controls[0]->sinks.size(), 1U);
}

TEST_F(ExcelCommandBarsTest, AFaceIsPastedWithItsMaskAndTheClipboardRestored) {
  CopyAsUser();
  Face face;
  face.pixels[0] = 0xFF112233;  // top left; the rest is transparent
  const auto button = bars_.Add(u"SMS")->Controls().Add({});
  button->PasteFace(face);
  const ControlData& pasted = *stand_in_.bars->Find(u"SMS")->controls[0];
  ASSERT_EQ(pasted.face.size(), 256U);
  constexpr std::size_t kTopLeft = 240;  // rows run from the bottom
  EXPECT_EQ(pasted.face[kTopLeft], 0x112233U);
  EXPECT_EQ(pasted.face[0], 0xC0C0C0U);
  EXPECT_EQ(pasted.mask[kTopLeft], 0U);
  EXPECT_EQ(pasted.mask[0], 0xFFFFFFU);
  EXPECT_EQ(ClipboardText(), kFormerText);
  EXPECT_TRUE(IsClipboardFormatAvailable(CF_ENHMETAFILE));
}

}  // namespace
}  // namespace quorvel::tests
