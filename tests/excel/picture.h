#pragma once

#include "hosts/excel/win32.h"

namespace quorvel::tests {

// Writes a picture of the window, frame included, to <name>.bmp in the folder that the environment variable
// QUORVEL_PICTURES names; does nothing without one. Throws std::runtime_error when it cannot be written.
void TakePicture(HWND window, const char* name);

}  // namespace quorvel::tests
