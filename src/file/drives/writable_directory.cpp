#include "file/drives/writable_directory.h"

#include "bridge/win32/message_inserts.h"
#include "bridge/win32/scoped_handle.h"
#include "file/drives/critical_errors.h"

namespace corvane {

namespace {

constexpr DWORD kNameElements = 260;
constexpr DWORD kNames = 100;

/// The n-th name to try. It is empty when it does not fit: what of it fits names another place.
class ProbeName {
 public:
  ProbeName(bool ansi, const void* directory, DWORD n) {
    const DWORD length = formatInserts(ansi,
                                       0,
                                       "%1!s!zq_test%2!ld!.txt",
                                       L"%1!ls!zq_test%2!ld!.txt",
                                       directory,
                                       n,
                                       name_,
                                       kNameElements);
    if (length == 0) {
      name_[0] = L'\0';
    }
  }

  const wchar_t* wide() const noexcept { return name_; }
  const char* ansi() const noexcept { return reinterpret_cast<const char*>(name_); }

 private:
  wchar_t name_[kNameElements] = {};
};

HANDLE createProbe(bool ansi, const void* directory, DWORD n) {
  const ProbeName name(ansi, directory, n);
  constexpr DWORD kFlags = FILE_FLAG_DELETE_ON_CLOSE | FILE_ATTRIBUTE_NORMAL;
  return ansi ? CreateFileA(name.ansi(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, kFlags, nullptr)
              : CreateFileW(name.wide(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, kFlags, nullptr);
}

/// Tries the names in turn; whether a file is made or all are taken. `probe` gets what the system
/// gave last.
bool tryNames(bool ansi, const void* directory, HANDLE& probe) {
  for (DWORD n = 0; n < kNames; ++n) {
    probe = createProbe(ansi, directory, n);
    if (probe != INVALID_HANDLE_VALUE) {
      return true;
    }
    const DWORD error = GetLastError();
    if (error != ERROR_ALREADY_EXISTS && error != ERROR_FILE_EXISTS) {
      return error == ERROR_SUCCESS;
    }
  }
  return true;
}

bool probeDirectory(const WString& directory, HANDLE& probe) {
  const CriticalErrorSuppressor suppressor;
  if (isWindows9x()) {
    const AnsiText ansi(directory.c_str());
    return tryNames(true, static_cast<const char*>(ansi), probe);
  }
  return tryNames(false, directory.c_str(), probe);
}

}  // namespace

bool isDirectoryWritable(const wchar_t* directory) {
  WString path(directory);
  if (path.back() != L'\\') {
    path += L'\\';  // also behind a slash
  }
  // Closed once the error mode is back, and the file disappears. A handle that is not valid is
  // closed too, which does no harm.
  ScopedKernelHandle probe;
  return probeDirectory(path, *probe.receive());
}

}  // namespace corvane
