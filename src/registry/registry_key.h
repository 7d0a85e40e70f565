#pragma once

#include <windows.h>

#include <cstdint>
#include <vector>

#include "bridge/win32/byte_buffer.h"
#include "bridge/win32/platform.h"
#include "bridge/win32/text.h"
#include "bridge/win32/win32_failure.h"

namespace corvane {

/// A registry function failed; the code is the Win32 error.
class RegistryException : public Win32Failure {
 public:
  using Win32Failure::Win32Failure;
};

/// What RegQueryInfoKey tells of a key: name lengths in characters without terminator, the data
/// length in bytes.
struct RegistryKeyInfo {
  DWORD subKeyCount = 0;
  DWORD maxSubKeyNameLength = 0;
  DWORD valueCount = 0;
  DWORD maxValueNameLength = 0;
  DWORD maxValueDataLength = 0;
};

/// The number of a root as Java passes it: 1 HKEY_CLASSES_ROOT, 2 HKEY_CURRENT_CONFIG,
/// 3 HKEY_CURRENT_USER, 4 HKEY_LOCAL_MACHINE, 5 HKEY_USERS. Every other number becomes -1, which
/// names no key.
int rootFromJava(int root) noexcept;

/// The library's one way into the Windows registry.
///
/// Every operation names its key by a root number and a path below it, opens it with the rights
/// that the work needs, does one thing and closes it. A null path is the root itself, which is not
/// opened. A null or empty value name is the key's default value. Every failure of the system is
/// thrown as RegistryException, a value of another type than the one asked for as
/// ERROR_INVALID_DATATYPE; a text that the ANSI code page lost as Win32Failure with
/// ERROR_NO_UNICODE_TRANSLATION; allocation failures as std::bad_alloc.
///
/// What the registry holds is not trusted: text may lack its terminator or hold several, may have
/// an odd number of bytes, and may change between two calls. No operation reads past the bytes that
/// the system returned.
class RegistryKey {
 public:
  RegistryKey() = default;
  RegistryKey(const RegistryKey&) = delete;
  RegistryKey& operator=(const RegistryKey&) = delete;
  virtual ~RegistryKey() = default;

  /// Opens the key with RegOpenKeyExA/W. The handle is the caller's, to be closed with RegCloseKey.
  HKEY openKey(int root, const wchar_t* path, REGSAM access) const;

  bool keyExists(int root, const wchar_t* path) const;
  bool valueExists(int root, const wchar_t* path, const wchar_t* name) const;

  /// The type number of a value: REG_SZ, REG_DWORD, ...
  DWORD getValueType(int root, const wchar_t* path, const wchar_t* name) const;

  /// A REG_SZ, or a REG_EXPAND_SZ. With `expand` the environment variables in the latter are
  /// expanded; an expansion that fails gives the empty text.
  WString getStringValue(int root, const wchar_t* path, const wchar_t* name, bool expand) const;
  uint32_t get32BitValue(int root, const wchar_t* path, const wchar_t* name) const;
  ByteBuffer getBinaryValue(int root, const wchar_t* path, const wchar_t* name) const;
  std::vector<WString> getMultiStringValue(int root,
                                           const wchar_t* path,
                                           const wchar_t* name) const;

  /// Hands over as many bytes as the UTF-16 text has without its terminator, 1 for an empty text,
  /// none for a null one; on the ANSI family these are the converted text and zeros. What the wide
  /// function stores of a text that is not empty has the terminator all the same: it adds the one
  /// that it finds behind the data.
  void setStringValue(int root,
                      const wchar_t* path,
                      const wchar_t* name,
                      bool expandable,
                      const wchar_t* text) const;
  void set32BitValue(int root, const wchar_t* path, const wchar_t* name, uint32_t value) const;
  void setBinaryValue(int root,
                      const wchar_t* path,
                      const wchar_t* name,
                      const ByteBuffer& bytes) const;
  void setMultiStringValue(int root,
                           const wchar_t* path,
                           const wchar_t* name,
                           const std::vector<WString>& texts) const;

  /// A value that is missing is a failure only when it `mustExist`.
  void deleteValue(int root, const wchar_t* path, const wchar_t* name, bool mustExist) const;

  /// Makes the key `name` below `parentPath`; one that is there already is a success.
  void createKey(int root, const wchar_t* parentPath, const wchar_t* name) const;

  /// Deletes the key `name` below `parentPath` with everything in it; a registry link goes itself,
  /// and where it leads nothing is touched. A key that is missing is a failure only when it
  /// `mustExist`; a name that is empty or begins with a backslash is ERROR_BADKEY.
  void deleteKey(int root, const wchar_t* parentPath, const wchar_t* name, bool mustExist) const;

  // These three leave their key open until the process ends, so that the part of the registry that
  // holds it (a user's, say) stays loaded for the questions that follow.

  RegistryKeyInfo queryInfo(int root, const wchar_t* path) const;
  /// Names in the system's order. One that does not fit into 1024 characters fails with
  /// ERROR_MORE_DATA.
  std::vector<WString> getValueNames(int root, const wchar_t* path) const;
  std::vector<WString> getSubKeyNames(int root, const wchar_t* path) const;

  /// Expands %NAME% references with ExpandEnvironmentStringsA/W into `out`, terminated. Returns the
  /// system's count of characters (of bytes on the ANSI family), 0 when it failed.
  uint32_t expandEnvironment(const wchar_t* text, ByteBuffer& out) const;

 private:
  struct Value;

  LSTATUS tryOpen(int root, const wchar_t* path, REGSAM access, HKEY& key) const;
  Value readValue(int root, const wchar_t* path, const wchar_t* name, uint32_t units) const;
  LSTATUS query(HKEY key, const wchar_t* name, DWORD* type, void* data, DWORD* size) const;
  LSTATUS queryValue(HKEY key, const wchar_t* name, Value& value) const;
  WString textOf(const Value& value) const;
  WString expanded(const WString& text) const;
  LSTATUS setValue(HKEY key,
                   const wchar_t* name,
                   DWORD type,
                   const void* data,
                   size_t byteLength) const;

  /// Asked once; all operations of this object call the functions of the same family.
  const bool isWin9x_ = isWindows9x();
};

}  // namespace corvane
