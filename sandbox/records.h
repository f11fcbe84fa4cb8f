#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace quorvel::sandbox {

// "<SMS>" payload "</SMS>".
[[nodiscard]] std::string Envelope(std::string_view payload);

// Records joined by ",", their fields by "-". Fields are bytes in windows-1252; inside them "," travels as
// byte 128 and "-" as "~". That leaves no byte for the euro sign, which becomes "?", and a "~" arrives as
// "-".
class RecordList {
 public:
  void Add(std::initializer_list<std::string_view> fields);
  // The records in an envelope, or "0" in it when there are none.
  [[nodiscard]] std::string Reply() const;

 private:
  std::string records_;
};

}  // namespace quorvel::sandbox
