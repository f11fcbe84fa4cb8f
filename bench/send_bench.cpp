#include <benchmark/benchmark.h>

#include <chrono>
#include <memory>
#include <stdexcept>

#include "addin/common/AlertBox.h"
#include "allocation_count.h"
#include "platform/memory/memory_recordset.h"
#include "platform/memory/memory_settings.h"
#include "platform/memory/memory_workbook.h"
#include "platform/memory/scripted_forms.h"
#include "platform/numbers.h"
#include "send/send_procedures.h"

namespace quorvel {
namespace {

class RunningClock : public Clock {
 public:
  [[nodiscard]] Date Now() const override { return Date{45352.5}; }
  [[nodiscard]] std::int64_t Ticks() const override {
    const auto since_start = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::milliseconds>(since_start).count();
  }
};

// Takes every job and keeps nothing of it but its size.
class SwallowingInternet : public Internet {
 public:
  [[nodiscard]] std::size_t body_size() const { return body_size_; }

  Handle Open(const SessionOptions&) override { return kHandle; }
  Handle Connect(Handle, const ConnectOptions&) override { return kHandle; }
  Handle OpenRequest(Handle, const RequestOptions&) override { return kHandle; }
  bool Send(Handle, std::string_view, std::string_view body) override {
    body_size_ = body.size();
    answered_ = false;
    return true;
  }
  Handle OpenUrl(Handle, TextView, std::uint32_t) override { return Handle::kNull; }
  Block Read(Handle, std::size_t) override {
    if (answered_) return {true, {}};
    answered_ = true;
    return {true, "000"};
  }
  void Close(Handle) override {}

 private:
  static constexpr Handle kHandle{1};

  std::size_t body_size_ = 0;
  bool answered_ = false;
};

// A sheet of customers: column A the number, B and C texts, D an amount. Every third number is written with a
// country code, every fiftieth is that of the row before.
void FillSheet(MemorySheet& sheet, std::int32_t rows) {
  for (std::int32_t row = 1; row <= rows; ++row) {
    const double number = 9000000000.0 + 7.0 * (row % 50 == 0 ? row - 1 : row);
    sheet.Set({u"A", row}, row % 3 == 0 ? number + 910000000000.0 : number);
    sheet.Set({u"B", row}, u"Customer " + NumberToText(row));
    sheet.Set({u"C", row}, Text(u"Springfield & Co."));
    sheet.Set({u"D", row}, row * 0.25);
  }
}

// An account that is logged in, and the sheet; what a send needs.
class Sender {
 public:
  explicit Sender(std::int32_t rows) {
    FillSheet(application_.OpenWorkbook().active(), rows);
    forms_.On<AlertBox>([](AlertBox& box) { box.btnOk.UserPress(); });
    session_.ServerHost = u"gateway";
    session_.ServerPort = 80;
    session_.UserName = u"user";
    session_.Password = u"password";
    session_.LoggedIn = true;
    choices_.message = u"Dear #B# of #C#, your order of #D# is ready. Thank you.";
    choices_.number_column = u"A";
  }

  void Send(bool ignore_duplicates) {
    choices_.ignore_duplicates = ignore_duplicates;
    const SendResult result = SendSMS(context_, preview_, choices_);
    if (result.outcome != SendOutcome::kAccepted) throw std::logic_error("the send was not accepted");
  }
  [[nodiscard]] std::size_t body_size() const { return internet_.body_size(); }

 private:
  RunningClock clock_;
  MemoryApplication application_;
  MemorySettings settings_;
  MemoryRecordsets recordsets_{clock_};
  ScriptedForms forms_;
  SwallowingInternet internet_;
  Platform platform_{application_, forms_, internet_, settings_, recordsets_, clock_, Windows1252()};
  Session session_;
  Progress progress_{forms_, clock_};
  Gateway gateway_{platform_, session_, progress_};
  SettingsStore store_{settings_};
  AddInContext context_{platform_, session_, progress_, gateway_, store_};
  PreviewState preview_;
  SendChoices choices_;
};

// The sender of that many rows; the last one is kept, as its sheet takes long to fill.
Sender& SenderOf(std::int32_t rows) {
  static std::int32_t kept_rows = 0;
  static std::unique_ptr<Sender> kept;
  if (rows != kept_rows) {
    kept.reset();
    kept = std::make_unique<Sender>(rows);
    kept_rows = rows;
  }
  return *kept;
}

// From the rows to the body, posted to an internet that takes no time. "memory" is the peak over the sheet,
// in bodies.
void Compose(benchmark::State& state, bool ignore_duplicates) {
  Sender& sender = SenderOf(static_cast<std::int32_t>(state.range(0)));
  for ([[maybe_unused]] const auto iteration : state) sender.Send(ignore_duplicates);

  const AllocationCount allocations;
  sender.Send(ignore_duplicates);
  state.counters["memory"] =
      static_cast<double>(allocations.peak()) / static_cast<double>(sender.body_size());
  state.counters["body"] = static_cast<double>(sender.body_size());
  state.counters["row"] =
      benchmark::Counter(static_cast<double>(state.range(0)),
                         benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void EverySize(benchmark::internal::Benchmark* benchmark) {
  benchmark->Arg(1'000)->Arg(100'000)->Arg(1'048'576)->Unit(benchmark::kMillisecond);
}
BENCHMARK_CAPTURE(Compose, duplicates_kept, false)->Apply(EverySize);
BENCHMARK_CAPTURE(Compose, duplicates_ignored, true)->Apply(EverySize);

}  // namespace
}  // namespace quorvel
