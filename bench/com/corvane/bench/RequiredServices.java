package com.corvane.bench;

import com.corvane.wizard.platform.win32.WindowsFixedFileInfo;
import com.corvane.wizard.platform.win32.win32service.NTServiceStatus;

/**
 * The calls of Windows and of JNI that the library owes its callers in each row of
 * {@link ServiceRows}, made by a plain native method: besides the bare calls the copies of texts,
 * look-ups and the Java objects, whose setters are found by name. A call that fails throws an
 * IllegalStateException.
 */
final class RequiredServices {
    private RequiredServices() {}

    static native NTServiceStatus queryService(String name);

    static native String[] listServices();

    static native WindowsFixedFileInfo readVersion(String file);

    static native String[] listRights(String account, String system);
}
