#pragma once

#include <jni.h>
#include <windows.h>

#include "bridge/java/java_class.h"

namespace corvane {

/// A FileAttributes object could not be read or built. It becomes E_FAIL before it leaves the
/// attribute functions.
class AttributeException {
 public:
  enum Code {
    kNoMethod = 1,  // getAttributeState or setAttributeState
    kNoClass = 2,   // com.corvane.util.FileAttributes
    kNoObject = 3,  // the constructor failed
    kNoConstructor = 4,
    kNoField = 5,  // one of the constants
  };

  explicit AttributeException(Code code) noexcept : code_(code) {}

  Code code() const noexcept { return code_; }

 private:
  Code code_;
};

/// Converts between Windows' attribute mask and Java's com.corvane.util.FileAttributes.
///
/// Java's states are addressed by the constants of that class, whose numbers are its own: they are
/// read each time. Both directions throw AttributeException, after clearing the Java error that a
/// look-up left, and PendingJavaException when one of the object's methods throws: Java sees what
/// it threw.
class FileAttributeMapper {
 public:
  /// For reading an object into a mask.
  explicit FileAttributeMapper(JNIEnv* env) noexcept : env_(env) {}

  /// For building an object from a mask.
  FileAttributeMapper(JNIEnv* env, DWORD mask) noexcept : env_(env), mask_(mask) {}

  /// The mask of `attributes`: read-only unless one of owner, group and world may write; hidden,
  /// archive and system as they are. No other bit is ever set, FILE_ATTRIBUTE_NORMAL included.
  DWORD read(jobject attributes);

  /// A new FileAttributes, as a local reference: everybody may read; may write unless the file is
  /// read-only; may execute a directory, and never a file.
  jobject build() const;

 private:
  bool state(jclass type, jobject attributes, const char* constant) const;
  bool isWriteable(jclass type, jobject attributes) const;
  void setState(jclass type, jobject attributes, const char* constant) const;
  jint constantValue(jclass type, const char* constant) const;
  JavaClass findClass() const;
  LocalReference<jobject> newObject(jclass type) const;

  template <class Found>
  void require(const Found& found, AttributeException::Code failure) const;

  JNIEnv* env_;
  DWORD mask_ = 0;
};

}  // namespace corvane
