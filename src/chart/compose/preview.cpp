#include "chart/compose/preview.h"

#include "chart/compose/auto_scale.h"
#include "chart/compose/make_chart.h"
#include "numerics/unheard_reports.h"

namespace tavlo {

namespace {

/// Keeps the session's reporter from boxes and log for a scope.
class Hush {
 public:
  explicit Hush(ErrorReporter& reporter) : reporter_(reporter), mode_(reporter.gErrMode) {
    reporter.gErrMode = UnheardReports::neither_box_nor_log;
  }
  ~Hush() { reporter_.gErrMode = mode_; }
  Hush(const Hush&) = delete;
  Hush& operator=(const Hush&) = delete;

 private:
  ErrorReporter& reporter_;
  int mode_;
};

}  // namespace

DrawingRecord preview_chart(Session& session, Chart& chart) {
  const Hush hush(session.errors);
  SetAutoScale(session, chart);
  UnheardReports unheard;
  return compose_chart(session, chart, unheard.prompts, unheard.errors);
}

}  // namespace tavlo
