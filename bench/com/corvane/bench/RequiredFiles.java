package com.corvane.bench;

import com.corvane.util.FileAttributes;

/**
 * The calls of Windows and of JNI that the library owes its callers in each row of {@link FileRows},
 * made by a plain native method: besides the bare calls the copies of texts, the questions which
 * Windows this is, guards, look-ups and sizes. What the library takes longer is its own. A call
 * that fails throws an IllegalStateException.
 */
final class RequiredFiles {
    private RequiredFiles() {}

    static native void copy(String source, String target);

    static native void delete(String file);

    static native void deleteTree(String directory);

    static native void setTimes(String file, long time);

    static native FileAttributes readAttributes(String file);
}
