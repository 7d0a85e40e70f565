#include "cleaner/removal.h"

#include <utility>

#include "cleaner/held_file.h"
#include "file/in_use/at_reboot.h"

namespace corvane {

namespace {

/// For what the process that has just ended still held, a virus scanner looks at, and the like.
constexpr DWORD kPatienceMilliseconds = 10'000;
constexpr DWORD kPauseMilliseconds = 200;

constexpr ACCESS_MASK kToList = FILE_LIST_DIRECTORY | FILE_READ_ATTRIBUTES;
constexpr ACCESS_MASK kToMakeWriteable = FILE_READ_ATTRIBUTES | FILE_WRITE_ATTRIBUTES;

constexpr DWORD kLinkOnTheWay = 4395;  // ERROR_REPARSE_POINT_ENCOUNTERED; not every SDK has it

bool isGone(DWORD error) noexcept {
  return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
}

/// What becomes of what cannot be deleted now.
enum class Rest { kStays, kGoesAtReboot };

/// One attempt at everything.
class Attempt {
 public:
  explicit Attempt(Rest rest) : rest_(rest) {}

  void remove(const Removable& removable) {
    const ListedFile found{removable.path, GetFileAttributesW(removable.path.c_str())};
    if (found.attributes == INVALID_FILE_ATTRIBUTES) {
      // What cannot be told, such as on a drive that is not ready, is still there.
      incomplete_ |= !isGone(GetLastError());
    } else if (!found.isDirectory()) {
      removeEntry(found);
    } else if (removable.isTree) {
      removeTree(found);
    }
  }

  /// Something is still there.
  bool isIncomplete() const noexcept { return incomplete_; }

 private:
  /// A directory that is being emptied, and what of its directories is still to be.
  struct Level {
    ListedFile self;
    HeldFile directory;
    std::vector<ListedFile> directories;
    /// Something in it has not gone.
    bool keeps = false;
  };

  /// However deep it is, without recursion. Each directory on the way is held open, and what is in
  /// it is opened through it by its name alone. So no link leads out of the tree, wherever one is
  /// put meanwhile by others who may write there; it is deleted itself when its turn comes.
  void removeTree(const ListedFile& root) {
    enter(root);
    while (!way_.empty()) {
      if (std::vector<ListedFile>& rest = way_.back().directories; rest.empty()) {
        leave();
      } else {
        const ListedFile next = std::move(rest.back());
        rest.pop_back();
        enter(next);
      }
    }
  }

  /// What was listed as a directory may be a link by now; what was listed as a link is none to
  /// enter, whatever it is by now.
  void enter(const ListedFile& self) {
    way_.push_back(
        {self, HeldFile(innermost(), self.name, HeldFile::Kind::kDirectory, kToList), {}, false});
    const HeldFile& directory = way_.back().directory;
    if (directory && !directory.isLink() &&
        (directory.isReparsePoint() || !self.isReparsePoint())) {
      removeContent();
    }
  }

  /// All but the directories and the links to such, which are left to be gone into.
  void removeContent() {
    for (ListedFile& found : way_.back().directory.list()) {
      if (found.isDirectory()) {
        way_.back().directories.push_back(std::move(found));
      } else {
        removeEntry(found);
      }
    }
  }

  void leave() {
    const ListedFile self = std::move(way_.back().self);
    const bool keeps = way_.back().keeps;
    way_.pop_back();
    removeEntry(self, keeps);
  }

  const HeldFile& innermost() const noexcept {
    return way_.empty() ? nowhere_ : way_.back().directory;
  }

  /// Not every system refuses at once to delete a directory that keeps something.
  void removeEntry(const ListedFile& entry, bool keeps = false) {
    const DWORD error = deleteNow(entry);
    if (keeps || (error != ERROR_SUCCESS && !isGone(error))) {
      if (!way_.empty()) {
        way_.back().keeps = true;
      }
      // The next start would follow a link that somebody put on the way.
      const bool waits = rest_ == Rest::kGoesAtReboot && error != kLinkOnTheWay;
      incomplete_ |= !waits || deleteAtReboot(pathOf(entry).c_str()).error.has_value();
    }
  }

  /// Whatever has its name by now: a link goes itself, and a directory that is not empty stays.
  DWORD deleteNow(const ListedFile& entry) const {
    const auto kind = entry.isDirectory() ? HeldFile::Kind::kDirectory : HeldFile::Kind::kFile;
    if (entry.isReadOnly()) {
      // On its own: what is in use can be made writeable, so that the next start can delete it.
      makeWriteable(HeldFile(innermost(), entry.name, kind, kToMakeWriteable));
    }
    const HeldFile file(innermost(), entry.name, kind, DELETE);
    return file ? file.remove() : file.error();
  }

  static void makeWriteable(const HeldFile& file) {
    if (file) {
      file.makeWriteable();
    }
  }

  /// By its name from the top, for the next start knows nothing else.
  WString pathOf(const ListedFile& entry) const {
    WString path;
    for (const Level& level : way_) {
      path += level.self.name + L"\\";
    }
    return path + entry.name;
  }

  Rest rest_;
  bool incomplete_ = false;
  const HeldFile nowhere_;
  /// From the root of a tree.
  std::vector<Level> way_;
};

bool isIncomplete(const std::vector<Removable>& removables, Rest rest) {
  Attempt attempt(rest);
  for (const Removable& removable : removables) {
    attempt.remove(removable);
  }
  return attempt.isIncomplete();
}

}  // namespace

void removeAll(const std::vector<Removable>& removables) {
  bool incomplete = isIncomplete(removables, Rest::kStays);
  // From here on, for to go through a large tree once may take longer.
  const DWORD begin = GetTickCount();
  while (incomplete && GetTickCount() - begin < kPatienceMilliseconds) {
    Sleep(kPauseMilliseconds);
    incomplete = isIncomplete(removables, Rest::kStays);
  }
  if (incomplete) {
    isIncomplete(removables, Rest::kGoesAtReboot);
  }
}

}  // namespace corvane
