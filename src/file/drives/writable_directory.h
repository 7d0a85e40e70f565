#pragma once

namespace corvane {

/// Whether a file can be made in a directory: by making one that disappears when it is closed,
/// under the first of the names zq_test0.txt to zq_test99.txt that is free. When all of them are
/// taken the answer is true: they could be made, after all. The caller has to refuse an empty path,
/// and a drive and nothing else (see isDriveAlone). Win32: CreateFileA/W.
bool isDirectoryWritable(const wchar_t* directory);

}  // namespace corvane
