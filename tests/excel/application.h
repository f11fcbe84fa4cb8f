#pragma once

#include <memory>

#include "hosts/excel/dispatch.h"
#include "hosts/excel/extensibility.h"
#include "tests/excel/bars.h"
#include "tests/excel/book.h"

namespace quorvel::tests {

// A stand-in for the spreadsheet application: a window, a workbook in memory, command bars, and the loading
// of add-ins by the registry. Everything happens on the thread that made it.
class StandIn {
 public:
  StandIn();
  StandIn(const StandIn&) = delete;
  StandIn& operator=(const StandIn&) = delete;
  ~StandIn();

  [[nodiscard]] ComPtr<IDispatch> object() const { return object_; }
  [[nodiscard]] HWND window() const { return window_; }
  // The references to the application's object that others hold.
  [[nodiscard]] ULONG ForeignReferences() const;

  // Loads the add-in of that program id as at start-up: its key must be among the user's add-ins and say so,
  // and its class must be registered. Throws std::runtime_error otherwise.
  void Load(TextView program_id);
  // Disconnects the add-in and lets go of it.
  void Unload();
  // What the add-in made known as its object, for macros.
  [[nodiscard]] AutomationObject AddinObject() const;

  std::shared_ptr<BookData> book;  // null: no workbook is open
  std::shared_ptr<BarsData> bars;

 private:
  HWND window_;
  ComPtr<IDispatch> object_;
  ComPtr<IDispatch> entry_;
  ComPtr<IDTExtensibility2> addin_;
};

}  // namespace quorvel::tests
