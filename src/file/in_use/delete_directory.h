#pragma once

#include "file/in_use/file_outcome.h"

namespace corvane {

/// Removes a directory that must be empty, as deleteEntry does. Without an error, the result is
/// kDone or kAtReboot.
FileOutcome deleteEmptyDirectory(const wchar_t* path);

/// Deletes the files of a directory, with `recursive` its sub-directories too, and then the
/// directory.
///
/// What is in use is deleted at the next start of Windows; its directory and all above it stay
/// then, and the result is kAtReboot. Everything else goes at once. After an error, which is the
/// first that is met, no further entry is looked at: only the files that were found already in the
/// directories above are still deleted, and no directory. Without `recursive`, a directory that has
/// sub-directories loses its files and fails with ERROR_DIR_NOT_EMPTY.
///
/// With `recursive`, a junction or a symbolic link in the tree is removed itself and never
/// followed: nothing outside the directory is touched. (The given path may itself be one; it names
/// the directory.) An empty path names no directory, nor does a drive and
/// nothing else (see isDriveAlone): ERROR_PATH_NOT_FOUND.
FileOutcome deleteDirectory(const wchar_t* path, bool recursive);

}  // namespace corvane
