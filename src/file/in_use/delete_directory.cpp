#include "file/in_use/delete_directory.h"

#include <memory>
#include <utility>
#include <vector>

#include "bridge/win32/path.h"
#include "bridge/win32/text.h"
#include "file/in_use/delete_entry.h"
#include "file/in_use/directory_search.h"

namespace corvane {

namespace {

/// An entry of a directory that is deleted once the directory's search is over.
struct Entry {
  WString path;
  EntryKind kind;
};

WString withSeparator(WString path) {
  appendPathSeparator(path);
  return path;
}

/// A directory that is being walked.
struct Level {
  explicit Level(const WString& directory)
      : path(directory),
        prefix(withSeparator(directory)),
        pattern(prefix + L"*"),
        search(pattern) {}

  WString path;
  WString prefix;
  WString pattern;
  DirectorySearch search;
  std::vector<Entry> entries;
  /// Something in it waits for the reboot.
  bool deferred = false;
};

/// Walks without recursion: however deep a tree is, it does not fill the stack of a Java thread.
class DirectoryWalker {
 public:
  explicit DirectoryWalker(bool recursive) : recursive_(recursive) {}

  FileOutcome run(const WString& root) {
    enter(root);
    while (!levels_.empty()) {
      if (Level& level = *levels_.back(); !outcome_.error && level.search.next()) {
        take(level);
      } else {
        leave();
      }
    }
    return outcome_;
  }

 private:
  void enter(const WString& path) {
    auto level = std::make_unique<Level>(path);
    if (level->search) {
      levels_.push_back(std::move(level));
    } else {
      keepError(GetLastError());
    }
  }

  /// Enters a sub-directory at once; everything else waits for the end of the search.
  void take(Level& level) {
    const DirectorySearch& found = level.search;
    WString path = level.prefix + found.name();
    if (!found.isDirectory()) {
      level.entries.push_back({std::move(path), EntryKind::kFile});
    } else if (recursive_ && found.isLink()) {
      level.entries.push_back({std::move(path), EntryKind::kDirectory});
    } else if (recursive_) {
      enter(path);
    }
  }

  /// The files of a directory go also when a sub-directory has failed; the directory itself only
  /// when nothing has, and when nothing in it waits for the reboot.
  void leave() {
    const std::unique_ptr<Level> level = std::move(levels_.back());
    levels_.pop_back();
    level->search.close();
    deleteEntries(*level);
    if (!outcome_.error && !level->deferred) {
      level->deferred =
          deleted({level->path, EntryKind::kDirectory}).result == FileOutcome::kAtReboot;
    }
    if (level->deferred) {
      defer();
    }
  }

  void deleteEntries(Level& level) {
    for (const Entry& entry : level.entries) {
      const FileOutcome outcome = deleted(entry);
      level.deferred |= outcome.result == FileOutcome::kAtReboot;
      if (outcome.error) {
        break;
      }
    }
  }

  FileOutcome deleted(const Entry& entry) {
    const FileOutcome outcome = deleteEntry(entry.path.c_str(), entry.kind);
    keepError(outcome.error.value_or(ERROR_SUCCESS));
    return outcome;
  }

  /// For the directory above, and for the result.
  void defer() {
    outcome_.result = FileOutcome::kAtReboot;
    if (!levels_.empty()) {
      levels_.back()->deferred = true;
    }
  }

  /// The first error is the one that counts.
  void keepError(DWORD error) {
    if (!outcome_.error) {
      outcome_.setError(error);
    }
  }

  bool recursive_;
  std::vector<std::unique_ptr<Level>> levels_;
  FileOutcome outcome_;
};

}  // namespace

FileOutcome deleteEmptyDirectory(const wchar_t* path) {
  FileOutcome outcome = deleteEntry(path, EntryKind::kDirectory);
  if (!outcome.error && outcome.result != FileOutcome::kAtReboot) {
    outcome.result = FileOutcome::kDone;
  }
  return outcome;
}

FileOutcome deleteDirectory(const wchar_t* path, bool recursive) {
  if (!hasText(path) || isDriveAlone(path)) {
    // With a separator behind it, it would be the root of a drive.
    return FileOutcome::failed(ERROR_PATH_NOT_FOUND, FileOutcome::kDone);
  }
  return DirectoryWalker(recursive).run(path);
}

}  // namespace corvane
