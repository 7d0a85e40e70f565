#include "file/properties/file_attribute_mapper.h"

#include "bridge/java/java_values.h"

namespace corvane {

namespace {

/// One state of the Java object: it is reported when the bits of `bits` have the value `value`.
struct Reported {
  const char* constant;
  DWORD bits;
  DWORD value;
};

/// In the order in which they are set.
constexpr Reported kReported[] = {
    {"OWNER_READABLE", 0, 0},
    {"GROUP_READABLE", 0, 0},
    {"WORLD_READABLE", 0, 0},
    {"OWNER_WRITEABLE", FILE_ATTRIBUTE_READONLY, 0},
    {"GROUP_WRITEABLE", FILE_ATTRIBUTE_READONLY, 0},
    {"WORLD_WRITEABLE", FILE_ATTRIBUTE_READONLY, 0},
    {"OWNER_EXECUTABLE", FILE_ATTRIBUTE_DIRECTORY, FILE_ATTRIBUTE_DIRECTORY},
    {"GROUP_EXECUTABLE", FILE_ATTRIBUTE_DIRECTORY, FILE_ATTRIBUTE_DIRECTORY},
    {"WORLD_EXECUTABLE", FILE_ATTRIBUTE_DIRECTORY, FILE_ATTRIBUTE_DIRECTORY},
    {"HIDDEN", FILE_ATTRIBUTE_HIDDEN, FILE_ATTRIBUTE_HIDDEN},
    {"ARCHIVE", FILE_ATTRIBUTE_ARCHIVE, FILE_ATTRIBUTE_ARCHIVE},
    {"SYSTEM", FILE_ATTRIBUTE_SYSTEM, FILE_ATTRIBUTE_SYSTEM},
};

}  // namespace

template <class Found>
Found FileAttributeMapper::required(Found found, AttributeException::Code failure) const {
  if (found == nullptr) {
    env_->ExceptionClear();
    throw AttributeException(failure);
  }
  return found;
}

jclass FileAttributeMapper::findClass() const {
  return required(env_->FindClass("com/corvane/util/FileAttributes"), AttributeException::kNoClass);
}

jmethodID FileAttributeMapper::findMethod(jclass type,
                                          const char* name,
                                          const char* signature,
                                          AttributeException::Code failure) const {
  return required(env_->GetMethodID(type, name, signature), failure);
}

jobject FileAttributeMapper::newObject(jclass type) const {
  const jmethodID constructor =
      findMethod(type, "<init>", "()V", AttributeException::kNoConstructor);
  const jobject made = env_->NewObject(type, constructor);
  if (made == nullptr) {
    // What the constructor threw stays pending: Java is to see it.
    throw AttributeException(AttributeException::kNoObject);
  }
  return made;
}

jint FileAttributeMapper::constantValue(jclass type, const char* constant) const {
  const jfieldID field =
      required(env_->GetStaticFieldID(type, constant, "I"), AttributeException::kNoField);
  return env_->GetStaticIntField(type, field);
}

bool FileAttributeMapper::state(jclass type, jobject attributes, const char* constant) const {
  const jmethodID getter =
      findMethod(type, "getAttributeState", "(I)Z", AttributeException::kNoMethod);
  const jboolean set = env_->CallBooleanMethod(attributes, getter, constantValue(type, constant));
  throwIfJavaExceptionPending(env_);
  return fromJavaBoolean(set);
}

void FileAttributeMapper::setState(jclass type, jobject attributes, const char* constant) const {
  const jmethodID setter =
      findMethod(type, "setAttributeState", "(IZ)V", AttributeException::kNoMethod);
  env_->CallVoidMethod(attributes, setter, constantValue(type, constant), JNI_TRUE);
  throwIfJavaExceptionPending(env_);
}

bool FileAttributeMapper::isWriteable(jclass type, jobject attributes) const {
  return state(type, attributes, "OWNER_WRITEABLE") || state(type, attributes, "GROUP_WRITEABLE") ||
         state(type, attributes, "WORLD_WRITEABLE");
}

DWORD FileAttributeMapper::read(jobject attributes) {
  const LocalReference type(env_, findClass());
  mask_ = isWriteable(type.get(), attributes) ? 0 : FILE_ATTRIBUTE_READONLY;
  if (state(type.get(), attributes, "HIDDEN")) {
    mask_ |= FILE_ATTRIBUTE_HIDDEN;
  }
  if (state(type.get(), attributes, "ARCHIVE")) {
    mask_ |= FILE_ATTRIBUTE_ARCHIVE;
  }
  if (state(type.get(), attributes, "SYSTEM")) {
    mask_ |= FILE_ATTRIBUTE_SYSTEM;
  }
  return mask_;
}

jobject FileAttributeMapper::build() const {
  const LocalReference type(env_, findClass());
  LocalReference attributes(env_, newObject(type.get()));
  for (const Reported& reported : kReported) {
    if ((mask_ & reported.bits) == reported.value) {
      setState(type.get(), attributes.get(), reported.constant);
    }
  }
  return attributes.release();
}

}  // namespace corvane
