/** What an installer needs from Windows and cannot get from Java. */
@SuppressWarnings("module") // the digits at its end are Windows' name, no version
module com.corvane.win32 {
    // By it the copies from the jar are held so that nobody else can touch them.
    requires jdk.unsupported;

    exports com.corvane.util;
    exports com.corvane.wizard.platform.win32;
    exports com.corvane.wizard.platform.win32.environment;
    exports com.corvane.wizard.platform.win32.security;
    exports com.corvane.wizard.platform.win32.win32service;
    exports com.corvane.wizard.service;
}
