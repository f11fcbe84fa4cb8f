#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/text.h"
#include "sandbox/local_time.h"

namespace quorvel::sandbox {

// What the gateway knows: its accounts and the jobs that they sent.

struct Template {
  Text name;
  Text text;
  bool unicode = false;  // saved as Unicode, so answered in hex
};

// A delivery report of a message that came in through another channel.
struct Report {
  Text number;
  Text message;
  Text sender;
  LocalTime submitted{};
  LocalTime due{};
  Text status;
  char16_t mode = u'L';  // the letter of a mode of submission
};

struct Account {
  Text crn;
  Text host;
  Text user;  // unique among all accounts: requests name no CRN
  Text password;
  bool blocked = false;
  std::int64_t credit = 0;  // in SMS
  std::vector<Text> senders;
  std::vector<Template> templates;
  std::vector<Report> reports;
};

struct Message {
  Text number;
  Text text;
  Text email;  // where the e-mail copy goes; empty without one
  LocalTime due{};
};

struct EmailCopy {
  Text subject;
  Text from;
};

struct Job {
  std::int64_t id = 0;
  Text user;
  std::string path;
  Text sender;
  std::optional<Text> service;  // "11", "31", "46", "44", "N", "FLASH"; nothing when none was asked for
  bool unicode = false;
  std::optional<Text> wap_url;
  bool scheduled = false;
  Text title;
  bool notify = false;
  std::optional<EmailCopy> email;
  LocalTime submitted{};
  std::vector<Message> messages;
  // The raw request among those recorded since the start; nothing for a job of an earlier run.
  std::optional<std::size_t> request;
};

struct Data {
  std::vector<Text> modes;  // "L-Description"
  std::vector<Account> accounts;
  std::vector<Job> jobs;
};

}  // namespace quorvel::sandbox
