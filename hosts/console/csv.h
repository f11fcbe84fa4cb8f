#pragma once

#include <cstddef>
#include <filesystem>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>

#include "platform/memory/memory_workbook.h"

namespace quorvel {

// What is wrong with a file, and where: the line counts from 1; 0 when it is the file as a whole.
struct CsvFault {
  std::size_t line = 0;
  std::string reason;
};

// Fills `sheet`, which is empty, with a comma-separated table (RFC 4180): UTF-8 with or without a byte order
// mark, or UTF-16 with one; lines end in CR LF, LF or CR. A cell's value and text are the field exactly as
// written; an empty field is an empty cell, an empty line a row without cells. Returns what is wrong with
// `bytes`, if anything is: not valid text, a zero character, a quote that is not closed or not followed by
// the end of its field, or more than a sheet holds. The sheet is then filled in part.
[[nodiscard]] std::optional<CsvFault> ReadCsv(std::string_view bytes, MemorySheet& sheet);

// The same for a file; one that cannot be read is a fault too.
[[nodiscard]] std::optional<CsvFault> ReadCsvFile(const std::filesystem::path& file, MemorySheet& sheet);

// The used range of `sheet` as displayed: UTF-8, CR LF, quoted where a field needs it.
void WriteCsv(MemorySheet& sheet, std::ostream& out);

}  // namespace quorvel
