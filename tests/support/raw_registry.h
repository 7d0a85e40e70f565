#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace bed {

/// The registry below HKEY_CURRENT_USER as it really is: bytes as they are stored, without the
/// library under test. Everything throws std::runtime_error when the system refuses.
class RawRegistry {
 public:
  struct Value {
    uint32_t type;
    std::vector<uint8_t> data;
  };

  static void createKey(const std::wstring& path);
  /// Makes a registry link, which leads to `target`.
  static void createLink(const std::wstring& path, const std::wstring& target);
  /// Deletes a key with everything in it, links themselves; one that is missing is no failure.
  static void deleteTree(const std::wstring& path);
  static void set(const std::wstring& path, const std::wstring& name, const Value& value);
  static std::optional<Value> get(const std::wstring& path, const std::wstring& name);
  /// All keys, values, types and data of a tree as text, for comparing.
  static std::wstring dump(const std::wstring& path);
};

}  // namespace bed
