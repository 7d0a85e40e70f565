#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace corvane {

/// The section "[Rename]" in the text of WinInit.Ini: where Windows 9x looks at its start for files
/// to rename and delete.

/// The bytes that lines take: each with one line feed.
size_t joinedLength(const std::vector<std::string>& lines);

/// Inserts `lines` in their order at the head of the section and returns where the file is to end.
///
/// `text` has `size` bytes, which may hold anything (NULs do not end it), and room for the lines
/// and ten bytes more. The section is the first "[Rename]" in this spelling, which is
/// the system's own.
///
/// With a line feed somewhere behind it, the lines go behind that line feed. With none, a line feed
/// and the lines go right behind the header, and the last byte of it all is cut off, whether it is
/// the line feed of the last line or the text's own: the end counts the lines alone. A section that
/// is missing is added at the end, with the lines.
size_t insertRenameLines(char* text, size_t size, const std::vector<std::string>& lines);

}  // namespace corvane
