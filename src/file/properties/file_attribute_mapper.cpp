#include "file/properties/file_attribute_mapper.h"

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
void FileAttributeMapper::require(const Found& found, AttributeException::Code failure) const {
  if (!isFound(env_, found)) {
    throw AttributeException(failure);
  }
}

JavaClass FileAttributeMapper::findClass() const {
  JavaClass type(env_, "com/corvane/util/FileAttributes");
  require(type, AttributeException::kNoClass);
  return type;
}

LocalReference<jobject> FileAttributeMapper::newObject(jclass type) const {
  const JavaConstructor<> construct(env_, type, "()V");
  require(construct, AttributeException::kNoConstructor);
  LocalReference<jobject> made = construct();
  if (!made) {
    // What the constructor threw stays pending: Java is to see it.
    throw AttributeException(AttributeException::kNoObject);
  }
  return made;
}

jint FileAttributeMapper::constantValue(jclass type, const char* constant) const {
  const JavaStaticInt field(env_, type, constant);
  require(field, AttributeException::kNoField);
  return field.get();
}

bool FileAttributeMapper::state(jclass type, jobject attributes, const char* constant) const {
  const JavaMethod<jboolean(jint)> getter(env_, type, "getAttributeState", "(I)Z");
  require(getter, AttributeException::kNoMethod);
  return fromJavaBoolean(getter(attributes, constantValue(type, constant)));
}

void FileAttributeMapper::setState(jclass type, jobject attributes, const char* constant) const {
  const JavaMethod<void(jint, jboolean)> setter(env_, type, "setAttributeState", "(IZ)V");
  require(setter, AttributeException::kNoMethod);
  setter(attributes, constantValue(type, constant), JNI_TRUE);
}

bool FileAttributeMapper::isWriteable(jclass type, jobject attributes) const {
  return state(type, attributes, "OWNER_WRITEABLE") || state(type, attributes, "GROUP_WRITEABLE") ||
         state(type, attributes, "WORLD_WRITEABLE");
}

DWORD FileAttributeMapper::read(jobject attributes) {
  const JavaClass type = findClass();
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
  const JavaClass type = findClass();
  LocalReference<jobject> attributes = newObject(type.get());
  for (const Reported& reported : kReported) {
    if ((mask_ & reported.bits) == reported.value) {
      setState(type.get(), attributes.get(), reported.constant);
    }
  }
  return attributes.release();
}

}  // namespace corvane
