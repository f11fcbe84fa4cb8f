#pragma once

#include <cstddef>

#include "platform/text.h"
#include "send/row_selection.h"

namespace quorvel {

enum class Service { kNone, kEnglish, kWapPush, kFlash };

struct CountryCode {
  bool wanted = false;
  Text code;
  std::size_t national_length = 0;  // the code goes before values of this many characters; 0: before none
};

struct EmailCopy {
  bool wanted = false;
  Text column;
  Text subject;
  Text from;
  Text password;
};

struct Schedule {
  bool wanted = false;
  Text title;
  Text minutes;      // until the send, one for all; not used with a date column
  Text date_column;  // each row's own date; empty: one date for all
  bool notify = false;
};

// Rows with the same number become one message.
struct Grouping {
  bool wanted = false;
  Text header;
  Text footer;
};

// What the user chose in the send form, read once when a send begins.
struct SendChoices {
  Text message;
  Text number_column;  // empty: none was chosen
  RowChoice rows;
  CountryCode country_code;
  bool ignore_duplicates = false;
  bool preview = false;
  Service service = Service::kNone;
  Text wap_url;
  Text sender;
  EmailCopy email;
  Schedule schedule;
  Grouping grouping;
};

// How a send ended.
enum class SendOutcome {
  kAccepted,   // the gateway took the job
  kRefused,    // the gateway answered with a result code
  kNotSent,    // stopped by a check of the add-in; nothing was posted
  kCancelled,  // stopped by the user; nothing was posted
  kUnknown,    // posted, but no answer says what became of it
};

// The field that the user has to look at after a send that was stopped.
enum class SendField { kNone, kRows, kNumberColumn };

struct SendResult {
  SendOutcome outcome = SendOutcome::kNotSent;
  SendField field = SendField::kNone;
};

}  // namespace quorvel
