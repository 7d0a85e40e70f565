#include "file/properties/file_times.h"

#include "bridge/win32/ansi_or_wide.h"
#include "bridge/win32/scoped_handle.h"
#include "bridge/win32/win32_failure.h"
#include "file/properties/read_only_guard.h"

namespace corvane {

namespace {

/// A time in the form and place that SetFileTime takes.
class FileTimeArgument {
 public:
  explicit FileTimeArgument(std::optional<int64_t> time) noexcept : given_(time.has_value()) {
    const auto bits = static_cast<uint64_t>(time.value_or(0));
    fileTime_ = {static_cast<DWORD>(bits), static_cast<DWORD>(bits >> 32)};
  }

  const FILETIME* get() const noexcept { return given_ ? &fileTime_ : nullptr; }

 private:
  bool given_;
  FILETIME fileTime_;
};

}  // namespace

void setFileTimes(const wchar_t* path, const FileTimes& times) {
  const ReadOnlyGuard guard(path, true);
  const ScopedFile file(ansiOrWide(CreateFileA,
                                   CreateFileW,
                                   path,
                                   DWORD{GENERIC_WRITE},
                                   DWORD{0},
                                   nullptr,
                                   DWORD{OPEN_EXISTING},
                                   DWORD{0},
                                   nullptr));
  throwUnless(static_cast<bool>(file));
  throwUnless(SetFileTime(file.get(),
                          FileTimeArgument(times.created).get(),
                          FileTimeArgument(times.accessed).get(),
                          FileTimeArgument(times.modified).get()) != FALSE);
}

}  // namespace corvane
