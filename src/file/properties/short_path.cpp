#include "file/properties/short_path.h"

#include "bridge/win32/ansi_or_wide.h"
#include "bridge/win32/win32_failure.h"

namespace corvane {

namespace {

DWORD getShortPath(bool ansi, const wchar_t* path, ByteBuffer& buffer) {
  const DWORD length = ansiOrWide(ansi,
                                  GetShortPathNameA,
                                  GetShortPathNameW,
                                  path,
                                  TextBuffer(buffer.data()),
                                  DWORD{buffer.count()});
  throwUnless(length != 0);
  return length;
}

}  // namespace

WString shortPath(const wchar_t* path) {
  const bool ansi = isWindows9x();
  ByteBuffer buffer;
  const DWORD size = getShortPath(ansi, path, buffer);
  buffer.allocate(size + 1, ansi ? sizeof(char) : sizeof(wchar_t));
  const DWORD length = getShortPath(ansi, path, buffer);
  if (length >= buffer.count()) {
    // A folder of the path was renamed meanwhile, to a longer name: nothing was written.
    throw Win32Failure(ERROR_INSUFFICIENT_BUFFER);
  }
  return ansi ? boundedTextFromAnsi(buffer.data<char>(), length)
              : boundedText(buffer.data<wchar_t>(), length);
}

}  // namespace corvane
