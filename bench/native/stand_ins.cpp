#include <jni.h>
#include <windows.h>

#include <psapi.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <iterator>

#include "bench_key.h"
#include "com_corvane_bench_StandIns.h"
#include "import_swap.h"

namespace {

struct Value {
  DWORD type;
  const void* data;
  DWORD size;
};

constexpr DWORD kNumber = 20417;
constexpr BYTE kBytes[kBenchByteLength] = {};
constexpr wchar_t kName[] = L"Value 00";

/// The rows' values differ in their first letter.
Value valueNamed(const wchar_t* name) {
  switch (*name) {
    case L'S':
      return {REG_SZ, kBenchText, sizeof(kBenchText) - sizeof(wchar_t)};
    case L'N':
      return {REG_DWORD, &kNumber, sizeof(kNumber)};
    default:
      return {REG_BINARY, kBytes, sizeof(kBytes)};
  }
}

BOOL WINAPI getVersion(OSVERSIONINFOA* version) {
  version->dwMajorVersion = 10;
  version->dwMinorVersion = 0;
  version->dwPlatformId = VER_PLATFORM_WIN32_NT;
  return TRUE;
}

LSTATUS WINAPI openKey(HKEY, const wchar_t*, DWORD, REGSAM, HKEY* key) {
  *key = HKEY_CURRENT_USER;
  return ERROR_SUCCESS;
}

LSTATUS WINAPI closeKey(HKEY) {
  return ERROR_SUCCESS;
}

LSTATUS WINAPI queryValue(HKEY, const wchar_t* name, DWORD*, DWORD* type, BYTE* data, DWORD* size) {
  const Value value = valueNamed(name);
  if (type != nullptr) {
    *type = value.type;
  }
  const bool fits = data == nullptr || *size >= value.size;
  if (data != nullptr && fits) {
    std::memcpy(data, value.data, value.size);
  }
  *size = value.size;
  return fits ? ERROR_SUCCESS : ERROR_MORE_DATA;
}

LSTATUS WINAPI setValue(HKEY, const wchar_t*, DWORD, DWORD, const BYTE*, DWORD) {
  return ERROR_SUCCESS;
}

LSTATUS WINAPI
enumValue(HKEY, DWORD index, wchar_t* name, DWORD* length, DWORD*, DWORD* type, BYTE*, DWORD*) {
  if (index == kBenchListLength) {
    return ERROR_NO_MORE_ITEMS;
  }
  std::copy(std::begin(kName), std::end(kName), name);
  *length = static_cast<DWORD>(std::size(kName) - 1);
  *type = REG_SZ;
  return ERROR_SUCCESS;
}

using Swaps = std::array<ImportSwap, 6>;

constexpr wchar_t kBenchLibrary[] = L"corvane_bench.dll";

/// Each exchange keeps what was there before: so there is one for the library and one for the calls
/// that are made beside it.
Swaps g_librarySwaps = {{
    {"GetVersionExA", reinterpret_cast<void*>(getVersion)},
    {"RegOpenKeyExW", reinterpret_cast<void*>(openKey)},
    {"RegCloseKey", reinterpret_cast<void*>(closeKey)},
    {"RegQueryValueExW", reinterpret_cast<void*>(queryValue)},
    {"RegSetValueExW", reinterpret_cast<void*>(setValue)},
    {"RegEnumValueW", reinterpret_cast<void*>(enumValue)},
}};
Swaps g_benchSwaps = g_librarySwaps;

/// Known by a function that it exports, for a copy unpacked from the jar has a name of its own.
HMODULE findLibrary() {
  HMODULE modules[512];
  DWORD size = 0;
  if (!EnumProcessModules(GetCurrentProcess(), modules, sizeof(modules), &size)) {
    return nullptr;
  }
  HMODULE* end = modules + std::min(size / sizeof(HMODULE), std::size(modules));
  HMODULE* found = std::find_if(modules, end, [](HMODULE module) {
    return GetProcAddress(
               module,
               "Java_com_corvane_wizard_platform_win32_Win32RegistryServiceImpl_keyExists") !=
           nullptr;
  });
  return found == end ? nullptr : *found;
}

bool swapAll(HMODULE module, Swaps& swaps) {
  return module != nullptr && std::all_of(swaps.begin(), swaps.end(), [&](auto& swap) {
           return swapImport(module, swap);
         });
}

}  // namespace

JNIEXPORT jboolean JNICALL Java_com_corvane_bench_StandIns_swap(JNIEnv*, jclass) {
  const bool swapped = swapAll(findLibrary(), g_librarySwaps) &&
                       swapAll(GetModuleHandleW(kBenchLibrary), g_benchSwaps);
  return swapped ? JNI_TRUE : JNI_FALSE;
}
