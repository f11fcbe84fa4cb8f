#pragma once

#include <memory>
#include <vector>

#include "tests/excel/automation.h"

namespace quorvel::tests {

// What the stand-in's command bars hold.
struct ControlData {
  std::int32_t type = 1;
  Text caption;
  std::int32_t style = 0;
  std::int32_t face_id = 0;
  bool begins_group = false;
  bool visible = true;
  bool enabled = true;
  bool temporary = false;
  Text tag;
  std::vector<std::uint32_t> face;  // pixels pasted from the clipboard, from the bottom left
  std::vector<std::uint32_t> mask;
  std::map<DWORD, ComPtr<IDispatch>> sinks;
  std::vector<std::shared_ptr<ControlData>> children;  // of a popup
};

struct BarData {
  Text name;
  bool visible = false;
  bool temporary = false;
  std::vector<std::shared_ptr<ControlData>> controls;
};

struct BarsData {
  std::vector<std::shared_ptr<BarData>> bars;

  [[nodiscard]] std::shared_ptr<BarData> Find(TextView name) const;
};

// A click by the user, on an enabled control only: as in the application, it fires the sinks of every control
// of the same tag.
void Click(const BarsData& bars, const std::shared_ptr<ControlData>& control);
// The control of that caption; fails the test and throws when there is none.
[[nodiscard]] std::shared_ptr<ControlData> Named(const std::vector<std::shared_ptr<ControlData>>& controls,
                                                 TextView caption);

// The application's CommandBars collection.
class BarsObject : public Automation {
 public:
  explicit BarsObject(const std::shared_ptr<BarsData>& bars);
};

}  // namespace quorvel::tests
