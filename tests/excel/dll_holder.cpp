// Holds a DLL as Excel does: dll_holder DLL says "held" and keeps it loaded until its input ends.

#include <cstdio>

#include "hosts/excel/win32.h"

int main(int count, char** arguments) {
  if (count != 2 || LoadLibraryA(arguments[1]) == nullptr) return 1;
  std::puts("held");
  std::fflush(stdout);
  while (std::getchar() != EOF) {
  }
  return 0;
}
