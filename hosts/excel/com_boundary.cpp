#include "hosts/excel/com_boundary.h"

#include <exception>

#include "hosts/excel/automation_error.h"
#include "hosts/excel/log.h"

namespace quorvel {

HRESULT CurrentExceptionToResult(std::string_view where) noexcept {
  try {
    throw;
  } catch (const RuntimeError& error) {
    Log(where, error.what());
    return ResultOfError(error.number());
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  } catch (const std::exception& error) {
    Log(where, error.what());
    return E_UNEXPECTED;
  } catch (...) {
    Log(where, "unknown exception");
    return E_UNEXPECTED;
  }
}

}  // namespace quorvel
