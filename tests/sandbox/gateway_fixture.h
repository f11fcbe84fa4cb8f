#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "sandbox/data_file.h"
#include "sandbox/gateway.h"
#include "sandbox/local_time.h"

namespace quorvel::sandbox {

inline constexpr std::string_view kBulk = "/Tools/Excel_Plugin/SaveBulkSMS.aspx";
inline constexpr std::string_view kBulkScrambled = "/Merrow/SaveExcelData_V2.asp";
inline constexpr std::string_view kScheduled = "/Merrow/SaveSchedulerData_Excel_Dynamic.asp";

// "user=demo" with the plain password, and with the scrambled one: "demo" shifted by the key 7 and by 3, 2,
// 1, 0, the key put in front of the second byte.
inline const std::string kPlain = "&user=demo&passwd=demo";
inline const std::string kScrambled = "&user=demo&passwd=n%07nuv%02";

// A gateway with the built-in data, a clock that is moved by hand, and a record of what it saved and logged.
class GatewayTest : public ::testing::Test {
 protected:
  void Restart(Data data) {
    gateway_.emplace(std::move(data), FaultRules(),
                     Surroundings{[this] { return now_; },
                                  [this](const Data& fresh) -> std::optional<std::string> {
                                    if (disk_is_full_) return "no space left";
                                    saved_ = fresh;
                                    return std::nullopt;
                                  },
                                  [this](std::string_view line) { log_.emplace_back(line); }});
  }

  void SetUp() override { Restart(DefaultData()); }

  // A restart with the same data but for the account's credit.
  void RestartWithCredit(std::int64_t credit) {
    Data data = DefaultData();
    data.accounts.front().credit = credit;
    Restart(std::move(data));
  }

  Answer Handle(std::string method, std::string_view target, std::string body) {
    return gateway_->Handle({std::move(method), std::string(target), "gateway", std::move(body)});
  }
  std::string Post(std::string_view path, std::string body) {
    return Handle("POST", path, std::move(body)).body;
  }
  std::string Get(std::string_view path) { return Handle("GET", path, "").body; }

  nlohmann::json Received() { return nlohmann::json::parse(Get("/_sandbox/messages")); }
  nlohmann::json Messages() { return Received()["messages"]; }
  std::vector<std::string> Texts() {
    std::vector<std::string> texts;
    for (const auto& message : Messages()) texts.push_back(message["text"]);
    return texts;
  }
  int Credit() { return nlohmann::json::parse(Get("/_sandbox/credit"))["demo"]; }

  LocalTime now_ = *FromIso("2024-03-01T10:00:00");
  std::optional<Data> saved_;
  bool disk_is_full_ = false;
  std::vector<std::string> log_;

 private:
  std::optional<Gateway> gateway_;
};

}  // namespace quorvel::sandbox
