#include <windows.h>

/// A library that has no business in the program: a process that loads it ends with status 99.
BOOL WINAPI DllMain(HINSTANCE, DWORD reason, void*) {
  if (reason == DLL_PROCESS_ATTACH) TerminateProcess(GetCurrentProcess(), 99);
  return TRUE;
}
