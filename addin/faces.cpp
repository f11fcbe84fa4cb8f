#include "addin/faces.h"

#include <array>
#include <string_view>

namespace quorvel {

namespace {

using Drawing = std::array<std::string_view, Face::kSize>;

// "." is transparent; the letters are the colours below.
constexpr std::uint32_t ColourOf(char mark) {
  switch (mark) {
    case 'b':
      return 0xFF1F5FA8;  // blue
    case 'l':
      return 0xFFDCEBFA;  // light blue
    case 'g':
      return 0xFF3C9A46;  // green
    case 'k':
      return 0xFF4A4A4A;  // dark grey
    case 'w':
      return 0xFFFFFFFF;
    default:
      return 0;
  }
}

Face Draw(const Drawing& drawing) {
  Face face;
  std::size_t pixel = 0;
  for (const std::string_view line : drawing) {
    for (const char mark : line) face.pixels[pixel++] = ColourOf(mark);
  }
  return face;
}

// A speech bubble with an arrow that leaves it.
constexpr Drawing kSend = {"................", ".bbbbbbbbbbbb...", "bllllllllllllb..", "bllllllllllllb..",
                           "blbbbbbblllllb..", "bllllllllllllb..", "blbbbbllgglllb..", "bllllllllgglllb.",
                           "bllgggggggggllb.", "bllgggggggggglb.", "bllgggggggggllb.", ".bbbbllllggbbb..",
                           "....blbbgg......", "....bb..........", "....b...........", "................"};

// A globe behind a plug.
constexpr Drawing kProxy = {"................", ".....bbbbbb.....", "...bbllbbllbb...", "..blllbllblllb..",
                            "..bllbllllbllb..", ".bbbbbbbbbbbbbb.", ".bllbllllllbllb.", ".bllbllllllbllb.",
                            ".bbbbbbbbbbbbbb.", "..bllbllllbllb..", "..blllbllbkkkk..", "...bbllbbkkkkkkk",
                            ".....bbbbkkkkk..", ".........kkkkkkk", "..........kkkk..", "................"};

// A question mark on a disc.
constexpr Drawing kHelp = {"................", ".....bbbbbb.....", "...bbbbbbbbbb...", "..bbbbwwwwbbbb..",
                           "..bbbwwbbwwbbb..", ".bbbbwwbbwwbbbb.", ".bbbbbbbbwwbbbb.", ".bbbbbbbwwbbbbb.",
                           ".bbbbbbwwbbbbbb.", ".bbbbbbwwbbbbbb.", ".bbbbbbbbbbbbbb.", "..bbbbbwwbbbbb..",
                           "..bbbbbwwbbbbb..", "...bbbbbbbbbb...", ".....bbbbbb.....", "................"};

}  // namespace

Face SendFace() {
  return Draw(kSend);
}

Face ProxyFace() {
  return Draw(kProxy);
}

Face HelpFace() {
  return Draw(kHelp);
}

}  // namespace quorvel
