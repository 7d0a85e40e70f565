#include "cleaner/removal.h"

#include "file/in_use/at_reboot.h"
#include "file/in_use/delete_entry.h"
#include "file/in_use/directory_search.h"

namespace corvane {

namespace {

/// For what the process that has just ended still held, a virus scanner looks at, and the like.
constexpr DWORD kPatienceMilliseconds = 10'000;
constexpr DWORD kPauseMilliseconds = 200;

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
    DirectorySearch found(removable.path);
    if (!found || !found.next()) {
      return;
    }
    const bool isDirectory = found.isDirectory();
    const bool isLink = found.isLink();
    found.close();
    if (!isDirectory) {
      removeEntry(removable.path, EntryKind::kFile);
    } else if (removable.isTree && isLink) {
      removeEntry(removable.path, EntryKind::kDirectory);
    } else if (removable.isTree) {
      removeTree(removable.path);
    }
  }

  /// Something is still there.
  bool isIncomplete() const noexcept { return incomplete_; }

 private:
  /// However deep it is, without recursion: each directory is listed behind the one that it is in,
  /// and they go from the end.
  void removeTree(const WString& root) {
    std::vector<WString> directories{root};
    for (size_t index = 0; index < directories.size(); ++index) {
      removeContent(WString(directories[index]), directories);
    }
    for (auto directory = directories.rbegin(); directory != directories.rend(); ++directory) {
      removeEntry(*directory, EntryKind::kDirectory);
    }
  }

  /// All but the directories in it, which are appended.
  void removeContent(const WString& directory, std::vector<WString>& directories) {
    for (DirectorySearch found(directory + L"\\*"); found && found.next();) {
      WString path = directory + L"\\" + found.name();
      if (found.isDirectory() && !found.isLink()) {
        directories.push_back(std::move(path));
      } else {
        removeEntry(path, found.isDirectory() ? EntryKind::kDirectory : EntryKind::kFile);
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
  const DWORD begin = GetTickCount();
  while (isIncomplete(removables, deleteEntryNow)) {
    if (GetTickCount() - begin >= kPatienceMilliseconds) {
      isIncomplete(removables, deleteNowOrAtReboot);
      return;
    }
    Sleep(kPauseMilliseconds);
  }
}

}  // namespace corvane
