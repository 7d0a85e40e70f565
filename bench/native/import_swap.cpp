#include "import_swap.h"

#include <cstring>
#include <utility>

namespace {

template <class T>
T* at(HMODULE module, ULONGLONG offset) {
  return reinterpret_cast<T*>(reinterpret_cast<BYTE*>(module) + offset);
}

const IMAGE_IMPORT_DESCRIPTOR* importsOf(HMODULE module) {
  const auto* dos = at<IMAGE_DOS_HEADER>(module, 0);
  const auto* headers = at<IMAGE_NT_HEADERS>(module, static_cast<ULONGLONG>(dos->e_lfanew));
  const auto& entry = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
  return at<IMAGE_IMPORT_DESCRIPTOR>(module, entry.VirtualAddress);
}

/// The cell through which the module calls the function; null when it has none in this DLL's table.
void** findCell(HMODULE module, const IMAGE_IMPORT_DESCRIPTOR& dll, const char* name) {
  const auto* names = at<IMAGE_THUNK_DATA>(module, dll.OriginalFirstThunk);
  auto* cells = at<void*>(module, dll.FirstThunk);
  for (; names->u1.AddressOfData != 0; ++names, ++cells) {
    const bool named = !IMAGE_SNAP_BY_ORDINAL(names->u1.Ordinal);
    if (named &&
        std::strcmp(at<IMAGE_IMPORT_BY_NAME>(module, names->u1.AddressOfData)->Name, name) == 0) {
      return cells;
    }
  }
  return nullptr;
}

bool exchange(void** cell, void*& function) {
  DWORD protection = 0;
  if (!VirtualProtect(cell, sizeof(*cell), PAGE_READWRITE, &protection)) {
    return false;
  }
  std::swap(*cell, function);
  return VirtualProtect(cell, sizeof(*cell), protection, &protection) != FALSE;
}

}  // namespace

bool swapImport(HMODULE module, ImportSwap& swap) {
  for (const auto* dll = importsOf(module); dll->Name != 0; ++dll) {
    if (void** cell = findCell(module, *dll, swap.name)) {
      return exchange(cell, swap.function);
    }
  }
  return false;
}
