#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "account/context.h"
#include "platform/workbook.h"
#include "preview/preview_state.h"
#include "send/number_list.h"
#include "send/placeholders.h"
#include "send/row_schedule.h"
#include "send/send_choices.h"
#include "send/send_rules.h"

namespace quorvel {

// What the gateway merges into messages: the parallel parts of one job.
struct Composition {
  NumberList numbers;
  Text message;           // the template that the cell data fills
  std::string cell_data;  // encoded; rows ended by kRowMark but for the last
  Text emails;            // one entry a number, joined by ","
  Text minutes;           // "," and a value for each number; only with a date column
  std::int32_t count = 0;
  bool long_consent = false;  // the user agreed to long messages
};

// Walks the rows of a send and composes the job. Asks and tells the user what the rows give cause to.
class Composer {
 public:
  // Everything outlives the composer.
  Composer(const AddInContext& context, PreviewState& preview, const SendChoices& choices,
           const SendRules& rules, Sheet& sheet);

  // Nothing when all rows were walked; otherwise how the send ended. An error of the host or of a cell names
  // the row.
  [[nodiscard]] std::optional<SendOutcome> Walk(const std::vector<std::int32_t>& rows);

  [[nodiscard]] Composition& composition() { return composition_; }

 private:
  struct Message {
    std::int32_t row = 0;  // the first one of a group
    Text number;
    Text text;
  };
  using Stop = std::optional<SendOutcome>;

  [[nodiscard]] Stop WalkRow(std::int32_t row);
  // The cleaned-up number of a row; empty when the row is passed over.
  [[nodiscard]] Text MobileNumber(std::int32_t row);
  void ReadCells(std::int32_t row);
  void AddToGroup(std::int32_t row, const Text& number);
  [[nodiscard]] Stop AddGroups();
  [[nodiscard]] Stop Add(const Message& message, const std::vector<CellText>& cells);
  void AppendCellData(const std::vector<CellText>& cells);
  void AppendEmail(std::int32_t row);
  [[nodiscard]] Stop CheckLength(const Message& message);

  const AddInContext& context_;
  PreviewState& preview_;
  const SendChoices& choices_;
  const SendRules& rules_;
  Sheet& sheet_;
  RowSchedule schedule_;
  std::vector<CellText> cells_;  // of the row at hand
  std::vector<Message> groups_;
  std::unordered_map<Text, std::size_t> group_of_number_;
  Composition composition_;
};

}  // namespace quorvel
