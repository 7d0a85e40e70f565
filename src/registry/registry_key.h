#pragma once

#include <windows.h>

#include <cstdint>
#include <vector>

#include "bridge/win32/byte_buffer.h"
#include "bridge/win32/platform.h"
#include "bridge/win32/text.h"
#include "registry/registry_exception.h"

namespace corvane {

/// What RegQueryInfoKey tells of a key: name lengths in characters without terminator, the data
/// length in bytes.
struct RegistryKeyInfo {
  DWORD subKeyCount = 0;
  DWORD maxSubKeyNameLength = 0;
  DWORD valueCount = 0;
  DWORD maxValueNameLength = 0;
  DWORD maxValueDataLength = 0;
};

/// The predefined keys, with the numbers by which Java names them.
enum class RegistryRoot {
  kNone = -1,  // no key: to open it fails as the system has it
  kClassesRoot = 1,
  kCurrentConfig = 2,
  kCurrentUser = 3,
  kLocalMachine = 4,
  kUsers = 5,
};

/// Every other number than the five names no key.
RegistryRoot rootFromJava(int root) noexcept;

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
  HKEY openKey(RegistryRoot root, const wchar_t* path, REGSAM access) const;

  bool keyExists(RegistryRoot root, const wchar_t* path) const;
  bool valueExists(RegistryRoot root, const wchar_t* path, const wchar_t* name) const;

  /// The type number of a value: REG_SZ, REG_DWORD, ...
  DWORD getValueType(RegistryRoot root, const wchar_t* path, const wchar_t* name) const;

  /// A REG_SZ, or a REG_EXPAND_SZ. With `expand` the environment variables in the latter are
  /// expanded; an expansion that fails gives the empty text.
  WString getStringValue(RegistryRoot root,
                         const wchar_t* path,
                         const wchar_t* name,
                         bool expand) const;
  uint32_t get32BitValue(RegistryRoot root, const wchar_t* path, const wchar_t* name) const;
  ByteBuffer getBinaryValue(RegistryRoot root, const wchar_t* path, const wchar_t* name) const;
  std::vector<WString> getMultiStringValue(RegistryRoot root,
                                           const wchar_t* path,
                                           const wchar_t* name) const;

  /// Hands over as many bytes as the UTF-16 text has without its terminator, 1 for an empty text,
  /// none for a null one; on the ANSI family these are the converted text and zeros. What the wide
  /// function stores of a text that is not empty has the terminator all the same: it adds the one
  /// that it finds behind the data.
  void setStringValue(RegistryRoot root,
                      const wchar_t* path,
                      const wchar_t* name,
                      bool expandable,
                      const wchar_t* text) const;
  void set32BitValue(RegistryRoot root,
                     const wchar_t* path,
                     const wchar_t* name,
                     uint32_t value) const;
  void setBinaryValue(RegistryRoot root,
                      const wchar_t* path,
                      const wchar_t* name,
                      const ByteBuffer& bytes) const;
  void setMultiStringValue(RegistryRoot root,
                           const wchar_t* path,
                           const wchar_t* name,
                           const std::vector<WString>& texts) const;

  /// A value that is missing is a failure only when it `mustExist`.
  void deleteValue(RegistryRoot root,
                   const wchar_t* path,
                   const wchar_t* name,
                   bool mustExist) const;

  /// Makes the key `name` below `parentPath`; one that is there already is a success.
  void createKey(RegistryRoot root, const wchar_t* parentPath, const wchar_t* name) const;

  /// Deletes the key `name` below `parentPath` with everything in it; a registry link goes itself,
  /// and where it leads nothing is touched. A key that is missing is a failure only when it
  /// `mustExist`; a name that is empty or begins with a backslash is ERROR_BADKEY.
  void deleteKey(RegistryRoot root,
                 const wchar_t* parentPath,
                 const wchar_t* name,
                 bool mustExist) const;

  // These three leave their key open until the process ends, so that the part of the registry that
  // holds it (a user's, say) stays loaded for the questions that follow.

  RegistryKeyInfo queryInfo(RegistryRoot root, const wchar_t* path) const;
  /// Names in the system's order. One that does not fit into 1024 characters fails with
  /// ERROR_MORE_DATA.
  std::vector<WString> getValueNames(RegistryRoot root, const wchar_t* path) const;
  std::vector<WString> getSubKeyNames(RegistryRoot root, const wchar_t* path) const;

 private:
  struct Value;

  LSTATUS tryOpen(RegistryRoot root, const wchar_t* path, REGSAM access, HKEY& key) const;
  Value readValue(RegistryRoot root,
                  const wchar_t* path,
                  const wchar_t* name,
                  uint32_t units) const;
  LSTATUS query(HKEY key, const wchar_t* name, DWORD* type, void* data, DWORD* size) const;
  LSTATUS queryValue(HKEY key, const wchar_t* name, Value& value) const;
  WString textOf(const Value& value) const;
  LSTATUS setValue(HKEY key,
                   const wchar_t* name,
                   DWORD type,
                   const void* data,
                   size_t byteLength) const;

  /// Asked once; all operations of this object call the functions of the same family.
  const bool isWin9x_ = isWindows9x();
};

}  // namespace corvane
