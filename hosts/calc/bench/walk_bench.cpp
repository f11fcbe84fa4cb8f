// Measures in the application itself what a send's walk over 100,000 rows takes, against a bare loop over the
// same cells. A job for tests/calc/speed.py; no part of the extension.

#include <algorithm>
#include <chrono>
#include <com/sun/star/beans/NamedValue.hpp>
#include <com/sun/star/frame/XFrame.hpp>
#include <com/sun/star/sheet/XSpreadsheetView.hpp>
#include <com/sun/star/task/XJob.hpp>
#include <com/sun/star/text/XTextRange.hpp>
#include <cppuhelper/implbase1.hxx>
#include <future>
#include <numeric>

#include "hosts/calc/calc_application.h"
#include "hosts/calc/calc_forms.h"
#include "hosts/calc/uno_errors.h"
#include "hosts/common/system_clock.h"
#include "platform/memory/memory_recordset.h"
#include "platform/memory/memory_settings.h"
#include "platform/memory/scripted_internet.h"
#include "send/composition.h"

namespace quorvel {

namespace {

using css::uno::Any;
using css::uno::Reference;
using css::uno::Sequence;
using css::uno::UNO_QUERY_THROW;

constexpr std::int32_t kRows = 100'000;
constexpr int kRounds = 5;
constexpr sal_Int32 kColumns = 4;  // a number and three placeholders

double Milliseconds(const std::function<void()>& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

class Measurement {
 public:
  Measurement(const Context& context, const Reference<css::frame::XFrame>& frame)
      : frame_(frame), forms_(context, clock_), recordsets_(clock_), application_(context) {
    application_.SetFrame(frame);
    forms_.SetFrame(frame);
    std::iota(rows_.begin(), rows_.end(), 1);
    choices_.message = u"Dear #A#, your bill of #C# is due on #D#.";
    choices_.number_column = u"B";
  }

  // What every way over the cells must do.
  double BareLoop() {
    const Reference<css::sheet::XSpreadsheetView> view(frame_->getController(), UNO_QUERY_THROW);
    const auto sheet = view->getActiveSheet();
    std::size_t length = 0;
    const double time = Milliseconds([&] {
      for (sal_Int32 row = 0; row < kRows; ++row) {
        for (sal_Int32 column = 0; column < kColumns; ++column) {
          const auto cell = sheet->getCellByPosition(column, row);
          const Reference<css::text::XTextRange> text(cell, UNO_QUERY_THROW);
          length += static_cast<std::size_t>(text->getString().getLength());
        }
      }
    });
    if (length == 0) throw RuntimeError(kApplicationError, u"The sheet is empty.");
    return time;
  }

  // The sheet as the add-in reads it, without composing.
  double ReadOnly() {
    const auto sheet = application_.ActiveWorkbook()->ActiveSheet();
    std::size_t length = 0;
    return Milliseconds([&] {
      for (const std::int32_t row : rows_) {
        length += ToText(sheet->Value({u"B", row})).size();
        for (const TextView column : {u"A", u"C", u"D"}) length += sheet->CellText({column, row}).size();
      }
    });
  }

  // The walk of a send, with the progress window and its cancel button.
  double Walk() {
    const Platform platform{application_, forms_, internet_, settings_, recordsets_, clock_, Windows1252()};
    Session session;
    Progress progress(forms_, clock_);
    Gateway gateway(platform, session, progress);
    SettingsStore store(settings_);
    const AddInContext context{platform, session, progress, gateway, store};
    PreviewState preview;
    const auto sheet = application_.ActiveWorkbook()->ActiveSheet();
    const double time = Milliseconds([&] {
      const ProgressCloser closer(progress);
      Composer composer(context, preview, choices_, RulesOf(Layout::kStandard), *sheet);
      if (composer.Walk(rows_) || composer.composition().count != kRows) {
        throw RuntimeError(kApplicationError, u"The walk was not completed.");
      }
    });
    return time;
  }

 private:
  Reference<css::frame::XFrame> frame_;
  SystemClock clock_;
  CalcForms forms_;
  ScriptedInternet internet_;
  MemorySettings settings_;
  MemoryRecordsets recordsets_;
  CalcApplication application_;
  std::vector<std::int32_t> rows_ = std::vector<std::int32_t>(kRows);
  SendChoices choices_;
};

class WalkBench : public cppu::WeakImplHelper1<css::task::XJob> {
 public:
  explicit WalkBench(const Context& context) : context_(context) {}

  // The median times in milliseconds of the bare loop, the reading and the walk in the window "Frame".
  Any SAL_CALL execute(const Sequence<css::beans::NamedValue>& arguments) override {
    Reference<css::frame::XFrame> frame;
    for (const auto& argument : arguments) argument.Value >>= frame;
    std::promise<std::vector<double>> result;
    Post(context_, [&] {
      try {
        result.set_value(Measure(frame));
      } catch (...) {
        result.set_exception(std::current_exception());
      }
    });
    Sequence<double> times(3);
    AtEntry("bench", [&] {
      const std::vector<double> medians = result.get_future().get();
      std::copy(medians.begin(), medians.end(), times.getArray());
    });
    return Any(times);
  }

 private:
  std::vector<double> Measure(const Reference<css::frame::XFrame>& frame) const {
    Measurement measurement(context_, frame);
    return {Median(measurement, &Measurement::BareLoop), Median(measurement, &Measurement::ReadOnly),
            Median(measurement, &Measurement::Walk)};
  }

  static double Median(Measurement& measurement, double (Measurement::*way)()) {
    std::vector<double> times(kRounds);
    for (double& time : times) time = (measurement.*way)();
    std::sort(times.begin(), times.end());
    return times[kRounds / 2];
  }

  Context context_;
};

}  // namespace

}  // namespace quorvel

extern "C" SAL_DLLPUBLIC_EXPORT css::uno::XInterface* QuorvelWalkBench(
    css::uno::XComponentContext* context, const css::uno::Sequence<css::uno::Any>&) {
  return cppu::acquire(new quorvel::WalkBench(context));
}
