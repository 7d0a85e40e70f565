#include "cleaner/removal.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "cleaner/held_file.h"

using namespace corvane;
namespace fs = std::filesystem;

namespace {

/// A new folder that is gone at the end, named as the cleaner names paths.
class RemovalTest : public testing::Test {
 protected:
  ~RemovalTest() override { removeAll({{root(), true}}); }

  static WString root() {
    return LR"(\\?\)" + (fs::temp_directory_path() / "corvane_removal").wstring();
  }

  static WString in(const WString& path) { return root() + L"\\" + path; }

  static void makeFolder(const WString& path) { CreateDirectoryW(path.c_str(), nullptr); }

  static void makeFile(const WString& path, DWORD attributes = FILE_ATTRIBUTE_NORMAL) {
    CloseHandle(
        CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, attributes, nullptr));
  }

  static bool has(const WString& path) {
    return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
  }

  void SetUp() override { makeFolder(root()); }
};

TEST_F(RemovalTest, LeavesNothingOfATreeHoweverDeepAndWide) {
  WString deepest = in(L"tree");
  for (int level = 0; level < 200; ++level) {
    makeFolder(deepest);
    deepest += L"\\d";
  }
  for (int count = 0; count < 300; ++count) {
    makeFile(in(L"tree\\" + WString(100, L'f') + std::to_wstring(count)), FILE_ATTRIBUTE_READONLY);
  }
  makeFile(in(L"file"));
  removeAll({{in(L"none"), true}, {in(L"tree"), false}});
  EXPECT_TRUE(has(in(L"tree")));
  removeAll({{in(L"file"), true}, {in(L"tree"), true}});
  EXPECT_FALSE(has(in(L"file")) || has(in(L"tree")));
}

/// Whatever comes to bear its name.
TEST_F(RemovalTest, KeepsToTheDirectoryThatIsOpen) {
  makeFolder(in(L"d"));
  makeFile(in(L"d\\file"));
  const HeldFile held({}, in(L"d"), HeldFile::Kind::kDirectory, FILE_LIST_DIRECTORY);
  MoveFileW(in(L"d").c_str(), in(L"aside").c_str());
  makeFolder(in(L"d"));
  makeFile(in(L"d\\file"));
  makeFile(in(L"d\\other"));
  ASSERT_EQ(held.list().size(), 1U);
  const ScopedFile user(CreateFileW(in(L"aside\\file").c_str(),
                                    GENERIC_READ | GENERIC_WRITE,
                                    7,
                                    nullptr,
                                    OPEN_EXISTING,
                                    0,
                                    nullptr));
  const HeldFile file(held, L"file", HeldFile::Kind::kFile, DELETE);
  EXPECT_TRUE(file);
  EXPECT_EQ(file.remove(), DWORD{ERROR_SUCCESS});
  EXPECT_TRUE(has(in(L"d\\file")));
}

}  // namespace
