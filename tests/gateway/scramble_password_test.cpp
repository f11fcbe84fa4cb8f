#include "gateway/scramble_password.h"

#include <gtest/gtest.h>

#include "platform/runtime_error.h"

namespace quorvel {
namespace {

// A key of 9: 2024 + 3 + 1 + 12 + 30 + 45 = 2115.
constexpr DateParts kNow{.year = 2024, .month = 3, .day = 1, .hour = 12, .minute = 30, .second = 45};
constexpr int kKey = 9;

std::string Scramble(TextView password, Rnd& rnd, const DateParts& now = kNow) {
  return Windows1252().Encode(ScramblePassword(password, MakeDate(now).value(), rnd, Windows1252()));
}

int CodeAt(const std::string& text, std::size_t position) {
  return static_cast<unsigned char>(text.at(position));
}

// The gateway's side of the scheme: the last character tells where the key is, the key and the place of each
// character how far it was shifted.
std::string Undo(std::string scrambled) {
  const auto place = static_cast<std::size_t>(CodeAt(scrambled, scrambled.size() - 1)) - 1;
  scrambled.pop_back();
  const int key = CodeAt(scrambled, place);
  scrambled.erase(place, 1);
  int shift = key + static_cast<int>(scrambled.size());
  for (char& c : scrambled) c = static_cast<char>(static_cast<unsigned char>(c) - --shift);
  return scrambled;
}

TEST(ScramblePassword, IsUndoneByTheGateway) {
  const DateParts new_year{.year = 2025, .month = 1, .day = 1};
  const DateParts latest{.year = 1999, .month = 12, .day = 31, .hour = 23, .minute = 59, .second = 59};
  Rnd rnd;  // one session: every password gets another place for its key
  for (const DateParts& now : {kNow, new_year, latest}) {
    for (const TextView password :
         {TextView(u"a"), TextView(u"ab"), TextView(u"p4ss w£rd!"), TextView(u"0123456789"),
          TextView(u"a long pass phrase of some sixty characters, blanks included.")}) {
      const std::string scrambled = Scramble(password, rnd, now);
      EXPECT_EQ(scrambled.size(), password.size() + 2);
      EXPECT_EQ(Undo(scrambled), Windows1252().Encode(password)) << scrambled;
    }
  }
}

TEST(ScramblePassword, ShiftsByTheKeyAndTheDistanceFromTheEnd) {
  Rnd rnd;
  EXPECT_EQ(Scramble(u"ab", rnd), "k\tk\x02");
}

TEST(ScramblePassword, TheKeysPlacesAreTheSameInEverySession) {
  Rnd rnd;
  for (const int place : {8, 6, 6, 3, 4}) {  // ten times .7055, .5334, .5795, .2896 and .3019
    const std::string scrambled = Scramble(u"0123456789", rnd);
    EXPECT_EQ(CodeAt(scrambled, 11), place);
    EXPECT_EQ(CodeAt(scrambled, static_cast<std::size_t>(place - 1)), kKey);
  }
}

TEST(ScramblePassword, TheEmptyPasswordIsOneCharacterAndStillDrawsANumber) {
  Rnd rnd;
  EXPECT_EQ(Scramble(u"", rnd), "\x01");
  EXPECT_EQ(CodeAt(Scramble(u"0123456789", rnd), 11), 6);
}

TEST(ScramblePassword, CodesEndAt255) {
  Rnd rnd;
  EXPECT_EQ(CodeAt(Scramble(u"\u00F6", rnd), 1), 255);       // 246 + 9
  for (const TextView password : {u"\u00F7", u"\u00F6b"}) {  // 247 + 9; 246 + 9 + 1
    try {
      Scramble(password, rnd);
      FAIL() << ToUtf8(password);
    } catch (const RuntimeError& error) {
      EXPECT_EQ(error.number(), 5);
    }
  }
}

}  // namespace
}  // namespace quorvel
