// Command bars over the stand-in's, and the clipboard's way there and back.

#include <gtest/gtest.h>

#include <cstring>

#include "hosts/excel/excel_command_bars.h"
#include "hosts/excel/face_clipboard.h"
#include "platform/runtime_error.h"
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

class ExcelCommandBarsTest : public testing::Test {
 protected:
  StandIn stand_in_;
  ExcelCommandBars bars_{AutomationObject(stand_in_.object())};
};

TEST_F(ExcelCommandBarsTest, ControlsAreTemporaryAndStandWhereTheyWerePut) {
  const auto menu_bar = bars_.MenuBar();
  const auto popup = menu_bar->Controls().Add({BarControlType::kPopup, menu_bar->Controls().Count()});
  popup->SetCaption(u"&SMS");
  for (const TextView caption : {TextView(u"Second"), TextView(u"First")}) {
    const auto button = popup->Children().Add({BarControlType::kButton, 1});
    button->SetCaption(caption);
    button->SetStyle(kIconAndCaption);
    button->SetBeginGroup(caption == u"Second");
    button->SetEnabled(caption == u"First");
  }
  const auto& menus = stand_in_.bars->bars[0]->controls;
  ASSERT_EQ(menus.size(), 4U);
  EXPECT_EQ(menus[2]->caption, u"&SMS");
  EXPECT_TRUE(menus[2]->temporary);
  ASSERT_EQ(menus[2]->children.size(), 2U);
  EXPECT_EQ(menus[2]->children[0]->caption, u"First");
  EXPECT_TRUE(menus[2]->children[1]->begins_group);
  EXPECT_FALSE(menus[2]->children[1]->enabled);
  EXPECT_EQ(menus[2]->children[1]->style, 3);
  EXPECT_EQ(menu_bar->FindControl(BarControlType::kPopup)->Caption(), u"&File");
  EXPECT_EQ(menu_bar->FindControl(BarControlType::kButton), nullptr);
  popup->Delete();
  EXPECT_EQ(stand_in_.bars->bars[0]->controls.size(), 3U);
}

TEST_F(ExcelCommandBarsTest, ASecondToolbarOfANameIsRefused) {
  bars_.Add(u"SMS")->SetVisible(true);
  EXPECT_TRUE(stand_in_.bars->Find(u"SMS")->visible);
  EXPECT_TRUE(stand_in_.bars->Find(u"SMS")->temporary);
  try {
    bars_.Add(u"SMS");
    FAIL();
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.number(), 5);
  }
}

TEST_F(ExcelCommandBarsTest, AClickRunsItsOwnHandlerOnlyUntilTheButtonIsLetGo) {
  const auto bar = bars_.Add(u"SMS");
  std::string clicked;
  auto first = bar->Controls().Add({});
  first->OnClick([&] { clicked += "1"; });
  auto second = bar->Controls().Add({});
  second->OnClick([&] {
    clicked += "2";
    second.reset();  // a handler may end its own button
  });
  const auto& controls = stand_in_.bars->Find(u"SMS")->controls;
  Click(*stand_in_.bars, controls[0]);
  Click(*stand_in_.bars, controls[1]);
  Click(*stand_in_.bars, controls[1]);
  EXPECT_EQ(clicked, "12");
  first->OnClick([] { throw RuntimeError(1004, u"must not leave"); });
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
  EXPECT_EQ(pasted.face[15 * 16], 0x112233U);
  EXPECT_EQ(pasted.face[0], 0xC0C0C0U);
  EXPECT_EQ(pasted.mask[15 * 16], 0U);
  EXPECT_EQ(pasted.mask[0], 0xFFFFFFU);
  EXPECT_EQ(ClipboardText(), kFormerText);
}

}  // namespace
}  // namespace quorvel::tests
