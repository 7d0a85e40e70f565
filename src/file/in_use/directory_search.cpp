#include "file/in_use/directory_search.h"

#include <utility>

#include "bridge/win32/ansi_or_wide.h"

namespace corvane {

DirectorySearch::DirectorySearch(const WString& pattern)
    : ansi_(isWindows9x()),
      search_(ansi_ ? FindFirstFileA(AnsiText(pattern.c_str()), &data_.ansi)
                    : FindFirstFileW(pattern.c_str(), &data_.wide)) {}

bool DirectorySearch::next() {
  do {
    if (!advance()) {
      return false;
    }
    if (ansi_) {
      keep(data_.ansi);
    } else {
      keep(data_.wide);
    }
  } while (name_ == L"." || name_ == L"..");
  return true;
}

bool DirectorySearch::advance() {
  if (std::exchange(atFirst_, false)) {
    return true;
  }
  return (ansi_ ? FindNextFileA(search_.get(), &data_.ansi)
                : FindNextFileW(search_.get(), &data_.wide)) != FALSE;
}

void DirectorySearch::keep(const WIN32_FIND_DATAA& found) {
  name_ = boundedTextFromAnsi(found.cFileName, MAX_PATH);
  attributes_ = found.dwFileAttributes;
  reparseTag_ = found.dwReserved0;
}

void DirectorySearch::keep(const WIN32_FIND_DATAW& found) {
  name_ = boundedText(found.cFileName, MAX_PATH);
  attributes_ = found.dwFileAttributes;
  reparseTag_ = found.dwReserved0;
}

bool DirectorySearch::isLink() const noexcept {
  return (attributes_ & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
         (reparseTag_ == 0 || IsReparseTagNameSurrogate(reparseTag_) != 0);
}

}  // namespace corvane
