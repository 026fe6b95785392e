// Registers the library's classes in the settings store, as a set-up program would.

#include <quillbox/automation.h>

int main() { return DllRegisterServer() == 0 ? 0 : 1; }
