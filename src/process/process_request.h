#pragma once

#include <jni.h>
#include <windows.h>

#include <span>

#include "bridge/java/java_object.h"

namespace corvane {

/// One of the two java.io.PipedOutputStreams of a request.
class RequestStream : public JavaObject {
 public:
  using JavaObject::JavaObject;

  /// Hands the bytes over unchanged, each by a call of "write".
  void write(std::span<const char> bytes) const;
};

/// What Java asks to be run, and what it is told of it. The object may be of any class that has the
/// methods. All throw JavaException.
class ProcessRequest : public JavaObject {
 public:
  ProcessRequest(JNIEnv* env, jobject request, jint showWindow)
      : JavaObject(env, request), env_(env), showWindow_(showWindow) {}

  // Null is the empty text.
  WString command() const { return callStringMethod(L"getCommand"); }
  WString argumentString() const { return callStringMethod(L"getArgumentString"); }
  WString user() const { return callStringMethod(L"getUsername"); }
  SecretText password() const { return callSecretMethod(L"getPassword"); }
  WString workgroup() const { return callStringMethod(L"getWorkgroup"); }

  /// How the program's window is shown: SW_HIDE and so on.
  WORD showWindow() const noexcept { return static_cast<WORD>(showWindow_); }

  RequestStream standardOutput() const { return stream(kStandardOutput); }
  RequestStream standardError() const { return stream(kStandardError); }

  void setReturnCode(DWORD code) const;

  /// Flushes and closes both streams, so that nobody who reads them waits for ever. Whatever these
  /// throw is of no consequence, and a Java exception that is pending stays so.
  void closeStreams() const noexcept;

 private:
  static constexpr const wchar_t* kStandardOutput = L"getStdOutputStream";
  static constexpr const wchar_t* kStandardError = L"getStdErrorStream";

  RequestStream stream(const wchar_t* getter) const;
  void closeStream(const wchar_t* getter) const noexcept;

  JNIEnv* env_;
  jint showWindow_;
};

/// The service that runs the request: it has a method for what is worth knowing and no failure.
class WarningLog {
 public:
  WarningLog(JNIEnv* env, jobject service) noexcept : env_(env), service_(service) {}

  void warn(const WString& text) const {
    JavaObject(env_, service_).callVoidMethodString(L"LogWarning", text);
  }

 private:
  JNIEnv* env_;
  jobject service_;
};

}  // namespace corvane
