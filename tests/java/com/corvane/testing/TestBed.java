package com.corvane.testing;

import static org.junit.jupiter.api.Assertions.assertEquals;

import com.corvane.wizard.platform.win32.Win32Library;
import com.corvane.wizard.platform.win32.Win32RegistryServiceImpl;
import com.sun.jna.JNIEnv;
import java.util.List;
import org.junit.jupiter.api.extension.AfterEachCallback;
import org.junit.jupiter.api.extension.BeforeEachCallback;
import org.junit.jupiter.api.extension.ExtensionContext;

/**
 * Gives every test an empty key in the registry, a library whose calls are watched, and at its end the
 * certainty that nothing stayed open and no rule was broken.
 */
public final class TestBed implements BeforeEachCallback, AfterEachCallback {

    private static final int INVALID_HANDLE = 6;

    static {
        Win32Library.load();
        List<String> unknown = Hooks.each(Hooks.hook(JNIEnv.CURRENT, "corvane_win32.dll"));
        assertEquals(List.of(), unknown, "The table of functions lacks them");
        // The C++ runtime allocates some memory when it throws for the first time, and keeps it.
        Outcome.assertFails(-100001, INVALID_HANDLE, () -> new Win32RegistryServiceImpl().keyExists(0, ""));
    }

    @Override
    public void beforeEach(ExtensionContext context) {
        Hooks.reset();
        RawRegistry.deleteTree(RawRegistry.KEY);
        RawRegistry.createKey(RawRegistry.KEY);
        Hooks.arm();
    }

    @Override
    public void afterEach(ExtensionContext context) {
        Hooks.disarm();
        RawRegistry.deleteTree(RawRegistry.KEY);
        assertEquals(List.of(), Hooks.each(Hooks.complaints()));
    }
}
