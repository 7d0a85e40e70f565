#include "cleaner/removal.h"

#include "file/in_use/at_reboot.h"
#include "file/in_use/delete_entry.h"
#include "file/in_use/directory_search.h"

namespace corvane {

namespace {

/// For what the process that has just ended still held, a virus scanner looks at, and the like.
constexpr DWORD kPatienceMilliseconds = 10'000;
constexpr DWORD kPauseMilliseconds = 200;

/// What stands at a path. A link is one that leads to a directory; one to a file is like a file.
enum class Found { kNothing, kFile, kLink, kDirectory };

bool isGone(DWORD error) noexcept {
  return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
}

/// How an entry is deleted.
using Deletion = FileOutcome (*)(const wchar_t* path, EntryKind kind);

/// Whatever keeps it from going now: a directory that holds what waits does not go either.
FileOutcome deleteNowOrAtReboot(const wchar_t* path, EntryKind kind) {
  const FileOutcome outcome = deleteEntryNow(path, kind);
  return outcome.error ? deleteAtReboot(path) : outcome;
}

/// One attempt at everything.
class Attempt {
 public:
  explicit Attempt(Deletion deletion) : delete_(deletion) {}

  void remove(const Removable& removable) {
    const Found found = find(removable.path);
    if (found == Found::kFile) {
      removeEntry(removable.path, EntryKind::kFile);
    } else if (found != Found::kNothing && removable.isTree) {
      removeTree(removable.path);
    }
  }

  /// Something is still there.
  bool isIncomplete() const noexcept { return incomplete_; }

 private:
  /// What cannot be told, such as on a drive that is not ready, is still there.
  Found find(const WString& path) {
    DirectorySearch search(path);
    if (!search || !search.next()) {
      incomplete_ |= !isGone(GetLastError());
      return Found::kNothing;
    }
    if (!search.isDirectory()) {
      return Found::kFile;
    }
    return search.isLink() ? Found::kLink : Found::kDirectory;
  }

  /// However deep it is, without recursion: each directory is listed behind the one that it is in,
  /// and they go from the end. Whether one is a link is asked right before it is gone into, for
  /// another program may have put one there since it was listed. Were that done in the moment
  /// after, or to a directory above it, the link would be followed: whoever can do so may delete in
  /// the tree, and an order of an administrator should name no tree in which others may.
  void removeTree(const WString& root) {
    std::vector<WString> directories{root};
    for (size_t index = 0; index < directories.size(); ++index) {
      if (find(directories[index]) == Found::kDirectory) {
        removeContent(WString(directories[index]), directories);
      }
    }
    for (; !directories.empty(); directories.pop_back()) {
      removeEntry(directories.back(), EntryKind::kDirectory);
    }
  }

  /// All but the directories in it and the links to such, which are appended.
  void removeContent(const WString& directory, std::vector<WString>& directories) {
    for (DirectorySearch found(directory + L"\\*"); found && found.next();) {
      WString path = directory + L"\\" + found.name();
      if (found.isDirectory()) {
        directories.push_back(std::move(path));
      } else {
        removeEntry(path, EntryKind::kFile);
      }
    }
  }

  void removeEntry(const WString& path, EntryKind kind) {
    incomplete_ |= delete_(path.c_str(), kind).error.has_value();
  }

  Deletion delete_;
  bool incomplete_ = false;
};

bool isIncomplete(const std::vector<Removable>& removables, Deletion deletion) {
  Attempt attempt(deletion);
  for (const Removable& removable : removables) {
    attempt.remove(removable);
  }
  return attempt.isIncomplete();
}

}  // namespace

void removeAll(const std::vector<Removable>& removables) {
  bool incomplete = isIncomplete(removables, deleteEntryNow);
  // From here on, for to go through a large tree once may take longer.
  const DWORD begin = GetTickCount();
  while (incomplete && GetTickCount() - begin < kPatienceMilliseconds) {
    Sleep(kPauseMilliseconds);
    incomplete = isIncomplete(removables, deleteEntryNow);
  }
  if (incomplete) {
    isIncomplete(removables, deleteNowOrAtReboot);
  }
}

}  // namespace corvane
