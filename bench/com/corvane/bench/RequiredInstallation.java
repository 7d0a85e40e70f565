package com.corvane.bench;

/**
 * The calls of Windows and of JNI that the library owes its callers in each row of {@link InstallationRows},
 * made by a plain native method: besides the bare calls the copies of texts, the questions which
 * Windows this is, guards, look-ups and sizes. What the library takes longer is its own. A call
 * that fails throws an IllegalStateException.
 */
final class RequiredInstallation {
    private RequiredInstallation() {}

    static native String temporaryDirectory();

    static native String programsDirectory();

    static native long freeSpace(String root);

    static native void checkAdministrator();

    static native String readOwner(String file);

    static native void makeShortcut(String folder, String subfolder, String name, String target,
            String arguments, String icon, String directory);
}
