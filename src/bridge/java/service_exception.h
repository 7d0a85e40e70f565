#pragma once

#include <jni.h>

#include <cstdint>

namespace corvane {

/// The only ways in which a failure reaches Java, as com.corvane.wizard.service.ServiceException.
///
/// Each raises with Throw and returns; the native then returns its default value. When a Java
/// exception is pending already, nothing happens: the first failure is the one that Java sees. When
/// the class or its constructor cannot be found, Java's own error for that stays pending. Other
/// failures inside are swallowed, but for a lack of memory: the forms with a message are for use
/// inside the native frame. `code` says which native failed, `messageId` (a Win32 error or an
/// HRESULT) why.

/// The code alone, for a failure that nobody expected.
void throwServiceException(JNIEnv* env, jint code) noexcept;

/// The code and the system's message (see errorMessage).
void throwServiceException(JNIEnv* env, jint code, uint32_t messageId);

/// The same, with severity 1 where the class has `setSeverity`.
void throwServiceExceptionWithSeverity(JNIEnv* env, jint code, uint32_t messageId);

/// The operation does not exist on this Windows. The code is the class's static field
/// OPERATION_NOT_SUPPORTED, or 0 when it has none.
void throwNotSupported(JNIEnv* env) noexcept;

}  // namespace corvane
