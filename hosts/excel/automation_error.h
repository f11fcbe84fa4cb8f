#pragma once

#include "hosts/excel/win32.h"
#include "platform/runtime_error.h"

namespace quorvel {

// A failed automation call as the language runtime reports it. A result of the form 0x800A0000 + n, from the
// call or from what it raised, gives number n; the dispatch interface's own failures give the runtime's
// numbers (438 for a member that is missing, 450, 13, 5); any other result is its own number, as a signed
// number. `raised` is what the object said about a DISP_E_EXCEPTION; its texts are freed.
[[nodiscard]] RuntimeError ErrorOfCall(HRESULT result, EXCEPINFO& raised);
[[nodiscard]] RuntimeError ErrorOfResult(HRESULT result);

// The way back: the result code of a run-time error number.
[[nodiscard]] HRESULT ResultOfError(int number);

// Throws ErrorOfResult(result) when it is a failure.
void ThrowIfFailed(HRESULT result);

}  // namespace quorvel
