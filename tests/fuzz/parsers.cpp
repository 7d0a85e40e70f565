#include <winternl.h>

#include <algorithm>
#include <cstring>
#include <memory>

#include "cleaner/order.h"
#include "environment/process_environment.h"
#include "file/drives/drive.h"
#include "file/in_use/rename_section.h"
#include "file/properties/file_version.h"
#include "file/properties/short_path.h"
#include "hostile_windows.h"
#include "registry/registry_key.h"
#include "service/service_config.h"
#include "service/service_control.h"
#include "service/service_extras.h"

using namespace corvane;

extern "C" NTSTATUS NTAPI LdrGetProcedureAddress(HMODULE, ANSI_STRING*, ULONG, void**);

namespace fuzz {
namespace {

// ---- The registry ----

constexpr auto kRoot = RegistryRoot::kCurrentUser;

constexpr auto openKey = [](auto, auto, auto, auto, HKEY* key) -> LSTATUS {
  *key = HKEY_CLASSES_ROOT;
  ++opened;
  return ERROR_SUCCESS;
};

constexpr auto queryValue = [](auto, auto, auto, DWORD* type, BYTE* to, DWORD* size) -> LSTATUS {
  if (type != nullptr) {
    *type = input.numbers[kType];
  }
  const DWORD room = to == nullptr ? 0 : *size;
  *size = tell(1);
  given.clear();
  if (to == nullptr || (*size > room && !has(kWritesAnyway))) {
    return to == nullptr ? ERROR_SUCCESS : ERROR_MORE_DATA;
  }
  handOut(to, room, *size);
  return static_cast<LSTATUS>(input.numbers[kError]);
};

LSTATUS nextName(DWORD index, void* to, DWORD room, DWORD length) {
  if (index >= input.numbers[kCount] % 4) {
    return ERROR_NO_MORE_ITEMS;
  }
  handOut(to, size_t{room} * unit(), size_t{length} * unit());
  return ERROR_SUCCESS;
}

void registryText() {
  const WString text =
      guarded([] { return RegistryKey().getStringValue(kRoot, L"k", L"v", has(kOther)); });
  demand(text == textIn(given), "a text ends at its NUL, or where the data end");
}

void registryList() {
  const auto list = guarded([] { return RegistryKey().getMultiStringValue(kRoot, L"k", L"v"); });
  const std::wstring units = unitsIn(given);
  size_t at = 0;
  for (const WString& text : list) {
    demand(has(k9x) || text == units.substr(at, units.find(L'\0', at) - at), "the texts follow");
    at += text.size() + 1;
  }
  demand(has(k9x) || at + 1 >= units.size(), "the list ends where the data end");
}

void registryBytes() {
  const auto bytes = guarded([] { return RegistryKey().getBinaryValue(kRoot, L"k", L"v"); });
  demand(std::string_view(bytes.data<char>(), bytes.byteLength()) == given, "all that was given");
}

void registryNames() {
  opened = -1;  // the key stays open, by promise
  const auto names = guarded([] {
    return has(kOther) ? RegistryKey().getSubKeyNames(kRoot, L"k")
                       : RegistryKey().getValueNames(kRoot, L"k");
  });
  demand(names.empty() || names.back() == textIn(given), "a name ends where it was told to end");
}

// ---- Files ----

/// The rules, told as plainly as they can be.
std::string withRenames(const std::string& text, const std::string& joined) {
  const std::string header = "[Rename]";
  const size_t found = text.find(header);
  if (found == std::string::npos) {
    return text + header + "\n" + joined;
  }
  const size_t behind = found + header.size();
  const size_t lineFeed = text.find('\n', behind);
  if (lineFeed != std::string::npos) {
    return text.substr(0, lineFeed + 1) + joined + text.substr(lineFeed + 1);
  }
  // Without a line feed behind the header the last byte is lost: the line feed of the last line, or
  // what stood at the end of the file.
  const std::string whole = text.substr(0, behind) + "\n" + joined + text.substr(behind);
  return whole.substr(0, text.size() + joined.size());
}

void renameSection() {
  const std::string& text = input.bytes;
  const std::vector<std::string> lines(input.numbers[kCount] % 4 + 1, text.substr(0, 9) + "=b");
  std::string joined;
  for (const std::string& line : lines) {
    joined += line + "\n";
  }
  const size_t room = text.size() + joinedLength(lines) + 10;
  const auto memory = guarded([&] { return std::make_unique<char[]>(room); });
  std::copy(text.begin(), text.end(), memory.get());
  const size_t end = insertRenameLines(memory.get(), text.size(), lines);
  demand(std::string_view(memory.get(), end) == withRenames(text, joined), "the rules");
}

intptr_t versionAt = 0;

/// What is found is what the input says, or what the system finds.
template <class Function, class Text>
BOOL findVersion(const char* name, const void* data, const Text* path, void** to, UINT* size) {
  static const auto find = reinterpret_cast<Function*>(
      reinterpret_cast<void*>(GetProcAddress(LoadLibraryA("version.dll"), name)));
  const auto begin = reinterpret_cast<intptr_t>(data);
  if (has(kOther)) {
    *to = reinterpret_cast<void*>(begin + static_cast<int>(input.numbers[kType]));
    *size = input.numbers[kCount];
  } else if (find(data, path, to, size) == FALSE) {
    return FALSE;
  }
  given.assign(static_cast<const char*>(data), given.size());  // the ANSI function writes into it
  versionAt = reinterpret_cast<intptr_t>(*to) - begin;
  return TRUE;
}

BOOL readVersion(DWORD size, void* to) {
  handOut(to, size, size);
  return succeed();
}

void version() {
  const auto info = guarded([] { return fixedFileInfo(L"f"); });
  const auto at = static_cast<size_t>(versionAt);
  demand(!info || (at <= given.size() &&
                   std::string_view(given).substr(at).starts_with(
                       std::string_view(reinterpret_cast<const char*>(&*info), sizeof(*info)))),
         "a version lies in the data");
}

// ---- Services ----

/// Of a record with pointers in these words. What is a small number in the input leads so far
/// behind the beginning of the answer, or before it.
template <size_t... pointers>
BOOL tellOfService(void* to, DWORD size, DWORD* needed) {
  if (to == nullptr) {
    *needed = tell(1);
    SetLastError(input.numbers[kType] == 0 ? ERROR_INSUFFICIENT_BUFFER : input.numbers[kType]);
    return has(kOther) ? TRUE : FALSE;
  }
  handOut(to, size, size);
  auto* const words = static_cast<intptr_t*>(to);
  for (const size_t index : std::initializer_list<size_t>{pointers...}) {
    if ((index + 1) * sizeof(intptr_t) <= size && std::abs(words[index]) < 0x8000) {
      words[index] += words[index] == 0 ? 0 : reinterpret_cast<intptr_t>(to);
    }
  }
  given.assign(static_cast<const char*>(to), size);
  return succeed();
}

SC_HANDLE openService(const void* /*where*/, const void* /*name*/, DWORD /*access*/) {
  ++opened;
  return reinterpret_cast<SC_HANDLE>(8);
}
BOOL queryConfig(SC_HANDLE /*service*/, void* to, DWORD size, DWORD* needed) {
  return tellOfService<2, 3, 5, 6, 7>(to, size, needed);
}
BOOL queryConfig2(SC_HANDLE /*service*/, DWORD level, void* to, DWORD size, DWORD* needed) {
  return level == SERVICE_CONFIG_DESCRIPTION ? tellOfService<0>(to, size, needed)
                                             : tellOfService<1, 2, 4>(to, size, needed);
}
BOOL queryStatus(SC_HANDLE /*service*/, int /*level*/, void* to, DWORD size, DWORD* needed) {
  return tellOfService<>(to, size, needed);
}

BOOL enumerate(const void* /*manager*/,
               DWORD /*types*/,
               DWORD /*states*/,
               void* to,
               DWORD size,
               DWORD* needed,
               DWORD* count,
               DWORD* /*resume*/) {
  *count = input.numbers[kCount];
  return tellOfService<0, 7, 14>(to, size, needed);
}
BOOL translate(SC_HANDLE /*manager*/, const void* /*name*/, void* to, DWORD* length) {
  *length = handOutText(to, to == nullptr ? 0 : *length);
  SetLastError(ERROR_INSUFFICIENT_BUFFER);
  return to == nullptr ? FALSE : succeed();
}

/// What is looked up; the system's own where it is nothing of these.
FARPROC lookUp(HMODULE module, const char* name) {
  const std::pair<const char*, void*> own[] = {
      {"OpenSCManagerW", reinterpret_cast<void*>(openService)},
      {"OpenServiceW", reinterpret_cast<void*>(openService)},
      {"QueryServiceConfigW", reinterpret_cast<void*>(queryConfig)},
      {"QueryServiceConfig2W", reinterpret_cast<void*>(queryConfig2)},
      {"QueryServiceStatusEx", reinterpret_cast<void*>(queryStatus)},
      {"EnumServicesStatusW", reinterpret_cast<void*>(enumerate)},
      {"GetServiceKeyNameW", reinterpret_cast<void*>(translate)},
  };
  for (const auto& [known, function] : own) {
    if (std::strcmp(name, known) == 0) {
      return reinterpret_cast<FARPROC>(function);
    }
  }
  ANSI_STRING text;
  RtlInitAnsiString(&text, name);
  void* found = nullptr;
  LdrGetProcedureAddress(module, &text, 0, &found);
  return reinterpret_cast<FARPROC>(found);
}

void demandTold(const OptionalText& text) {
  const size_t size = text.get() == nullptr ? 0 : (std::wcslen(text.get()) + 1) * sizeof(wchar_t);
  const std::string_view bytes(reinterpret_cast<const char*>(text.get()), size);
  demand(given.find(bytes) != std::string::npos, "a text lies in the answer, with its NUL");
}

void serviceConfig() {
  if (const auto config = guarded([] { return queryServiceConfig(L"s"); })) {
    demandTold(config->displayName);
    demandTold(config->command);
    if (config->dependencies) {
      std::for_each(config->dependencies->begin(), config->dependencies->end(), demandTold);
    }
  }
}

void serviceDescription() {
  demandTold(guarded([] { return queryServiceDescription(L"s"); }));
}

void serviceFailures() {
  if (const auto failures = guarded([] { return queryFailureActions(L"s"); })) {
    demandTold(failures->rebootMessage);
    const std::string_view actions(reinterpret_cast<const char*>(failures->actions.data()),
                                   failures->actions.size() * sizeof(SC_ACTION));
    demand(given.find(actions) != std::string::npos, "the actions lie in the answer");
  }
}

void serviceNames() {
  if (const auto names = guarded([] { return enumerateServices(0, 0); })) {
    std::for_each(names->begin(), names->end(), demandTold);
  }
}

void serviceKey() {
  guarded([] { return serviceKeyName(L"s"); });
}

void serviceStatus() {
  guarded([] { return queryServiceStatusProcess(L"s"); });
}

// ---- The rest ----

void variable() {
  const auto value = guarded([] { return processVariable(L"v"); });
  demand(value.value_or(L"") == (has(k9x) ? textIn(given) : unitsIn(given)), "all of the value");
}

void systemTexts() {
  if (has(kOther)) {
    guarded([] { return driveNames(); });
  } else {
    const WString path = guarded([] { return shortPath(L"p"); });
    demand(path == textIn(given), "all of the short path");
  }
}

void order() {
  const auto message = guarded([&] { return std::make_unique<char[]>(input.bytes.size()); });
  std::copy(input.bytes.begin(), input.bytes.end(), message.get());
  const auto found = guarded([&] { return orderIn(message.get(), input.bytes.size()); });
  for (const Removable& entry : found ? found->removables() : std::vector<Removable>()) {
    demand(entry.path.starts_with(L"\\\\?\\") && entry.path.find(L"\\..\\") == WString::npos,
           "only what may go");
  }
}

}  // namespace

const Parser kParsers[] = {
    {"order", order},
    {"registry-bytes", registryBytes},
    {"registry-list", registryList},
    {"registry-names", registryNames},
    {"registry-text", registryText},
    {"rename-section", renameSection},
    {"service-config", serviceConfig},
    {"service-description", serviceDescription},
    {"service-failures", serviceFailures},
    {"service-key", serviceKey},
    {"service-names", serviceNames},
    {"service-status", serviceStatus},
    {"system-texts", systemTexts},
    {"variable", variable},
    {"version", version},
};

IMPORT_PAIR(RegOpenKeyEx, openKey);
IMPORT_PAIR(RegQueryValueEx, queryValue);
IMPORT_PAIR(RegEnumKey, [](auto, DWORD index, auto* to, DWORD room) -> LSTATUS {
  return nextName(index, to, room, room);
});
IMPORT_PAIR(RegEnumValue,
            [](auto, DWORD index, auto* to, DWORD* size, auto, auto, auto, auto) -> LSTATUS {
              const DWORD room = std::exchange(*size, tell(unit()));
              return nextName(index, to, room, *size);
            });
IMPORT(RegCloseKey, [](HKEY /*key*/) -> LSTATUS { return --opened, ERROR_SUCCESS; });
IMPORT(CloseServiceHandle, [](SC_HANDLE /*handle*/) -> BOOL { return --opened, TRUE; });
IMPORT(GetProcAddress, lookUp);
IMPORT_PAIR(GetEnvironmentVariable,
            [](auto, auto* to, DWORD size) { return handOutText(to, size); });
IMPORT_PAIR(GetShortPathName, [](auto, auto* to, DWORD size) { return handOutText(to, size); });
// These two do not tell how much of the buffer they filled.
IMPORT_PAIR(GetLogicalDriveStrings, [](DWORD size, auto* to) {
  handOut(to, size_t{size} * unit(), 0);
  return tell(unit());
});
IMPORT_PAIR(ExpandEnvironmentStrings, [](auto, auto* to, DWORD size) {
  const DWORD count = tell(unit());
  handOut(to, size_t{size} * unit(), count == 0 ? 0 : size_t{size} * unit());
  return count;
});

}  // namespace fuzz

// The headers do not declare these as imports: they are called by their names.
extern "C" {
DWORD WINAPI GetFileVersionInfoSizeA(const char* /*path*/, DWORD* /*handle*/) {
  return fuzz::tell(1);
}
DWORD WINAPI GetFileVersionInfoSizeW(const wchar_t* /*path*/, DWORD* /*handle*/) {
  return fuzz::tell(1);
}
BOOL WINAPI GetFileVersionInfoA(const char* /*path*/, DWORD /*handle*/, DWORD size, void* to) {
  return fuzz::readVersion(size, to);
}
BOOL WINAPI GetFileVersionInfoW(const wchar_t* /*path*/, DWORD /*handle*/, DWORD size, void* to) {
  return fuzz::readVersion(size, to);
}
BOOL WINAPI VerQueryValueA(const void* data, const char* path, void** to, UINT* size) {
  return fuzz::findVersion<decltype(VerQueryValueA)>("VerQueryValueA", data, path, to, size);
}
BOOL WINAPI VerQueryValueW(const void* data, const wchar_t* path, void** to, UINT* size) {
  return fuzz::findVersion<decltype(VerQueryValueW)>("VerQueryValueW", data, path, to, size);
}
}
