#include <jni.h>
#include <windows.h>

#include <string>
#include <vector>

#include "com_corvane_bench_RequiredFiles.h"
#include "java_text.h"
#include "required_calls.h"
#include "timed_calls.h"

namespace {

/// What the object of the row's file is told: the file has the archive attribute and no other.
constexpr const char* kReported[] = {
    "OWNER_READABLE",
    "GROUP_READABLE",
    "WORLD_READABLE",
    "OWNER_WRITEABLE",
    "GROUP_WRITEABLE",
    "WORLD_WRITEABLE",
    "ARCHIVE",
};

/// A path where nothing is counts as read-only, too.
void liftReadOnly(const std::wstring& path) {
  askVersion();
  const DWORD attributes = GetFileAttributesW(path.c_str());
  if ((attributes & FILE_ATTRIBUTE_READONLY) != 0) {
    SetFileAttributesW(path.c_str(), attributes - FILE_ATTRIBUTE_READONLY);
  }
}

DWORD copyFile(const std::wstring& source, const std::wstring& target) {
  liftReadOnly(target);
  askVersion();
  return errorUnless(CopyFileW(source.c_str(), target.c_str(), FALSE));
}

DWORD deleteFile(const std::wstring& path) {
  liftReadOnly(path);
  askVersion();
  return errorUnless(DeleteFileW(path.c_str()));
}

DWORD deleteTree(const std::wstring& directory);

DWORD visit(const std::wstring& prefix,
            const WIN32_FIND_DATAW& found,
            std::vector<std::wstring>& files) {
  const std::wstring name = found.cFileName;
  if (name == L"." || name == L"..") {
    return ERROR_SUCCESS;
  }
  if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
    return deleteTree(prefix + name);
  }
  files.push_back(prefix + name);
  return ERROR_SUCCESS;
}

/// Deletes the directories below while it searches.
DWORD findFiles(const std::wstring& prefix, std::vector<std::wstring>& files) {
  askVersion();
  WIN32_FIND_DATAW found;
  HANDLE search = FindFirstFileW((prefix + L"*").c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) {
    return GetLastError();
  }
  DWORD error = ERROR_SUCCESS;
  do {
    error = visit(prefix, found, files);
  } while (error == ERROR_SUCCESS && FindNextFileW(search, &found) != FALSE);
  FindClose(search);
  return error;
}

/// Its own files go when the search is over.
DWORD deleteTree(const std::wstring& directory) {
  std::vector<std::wstring> files;
  DWORD error = findFiles(directory + L"\\", files);
  for (size_t i = 0; error == ERROR_SUCCESS && i < files.size(); ++i) {
    error = deleteFile(files[i]);
  }
  if (error != ERROR_SUCCESS) {
    return error;
  }
  liftReadOnly(directory);
  askVersion();
  return errorUnless(RemoveDirectoryW(directory.c_str()));
}

/// Nobody else may have the file open for writing.
DWORD setTimes(const std::wstring& path, const FILETIME& time) {
  liftReadOnly(path);
  askVersion();
  HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  if (file == INVALID_HANDLE_VALUE) {
    return GetLastError();
  }
  const DWORD error = errorUnless(SetFileTime(file, &time, &time, &time));
  CloseHandle(file);
  return error;
}

/// Each constant is set by itself, and the setter looked up for it.
jobject newAttributes(JNIEnv* env) {
  jclass type = env->FindClass("com/corvane/util/FileAttributes");
  jobject attributes = env->NewObject(type, env->GetMethodID(type, "<init>", "()V"));
  for (const char* constant : kReported) {
    jmethodID setter = env->GetMethodID(type, "setAttributeState", "(IZ)V");
    jfieldID field = env->GetStaticFieldID(type, constant, "I");
    env->CallVoidMethod(attributes, setter, env->GetStaticIntField(type, field), JNI_TRUE);
    env->ExceptionCheck();
  }
  return attributes;
}

}  // namespace

extern "C" {

JNIEXPORT void JNICALL Java_com_corvane_bench_RequiredFiles_copy(JNIEnv* env,
                                                                 jclass,
                                                                 jstring source,
                                                                 jstring target) {
  const std::wstring from = textOf(env, source);
  const std::wstring to = textOf(env, target);
  raiseUnlessZero(env, copyFile(from, to));
}

JNIEXPORT void JNICALL Java_com_corvane_bench_RequiredFiles_delete(JNIEnv* env,
                                                                   jclass,
                                                                   jstring file) {
  raiseUnlessZero(env, deleteFile(textOf(env, file)));
}

JNIEXPORT void JNICALL Java_com_corvane_bench_RequiredFiles_deleteTree(JNIEnv* env,
                                                                       jclass,
                                                                       jstring directory) {
  raiseUnlessZero(env, deleteTree(textOf(env, directory)));
}

JNIEXPORT void JNICALL Java_com_corvane_bench_RequiredFiles_setTimes(JNIEnv* env,
                                                                     jclass,
                                                                     jstring file,
                                                                     jlong time) {
  const auto bits = static_cast<ULONGLONG>(time);
  const FILETIME fileTime = {static_cast<DWORD>(bits), static_cast<DWORD>(bits >> 32)};
  raiseUnlessZero(env, setTimes(textOf(env, file), fileTime));
}

JNIEXPORT jobject JNICALL Java_com_corvane_bench_RequiredFiles_readAttributes(JNIEnv* env,
                                                                              jclass,
                                                                              jstring file) {
  const std::wstring path = textOf(env, file);
  askVersion();
  raiseUnlessZero(env, errorUnless(GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES));
  return newAttributes(env);
}

}  // extern "C"
