package com.corvane.testing;

import com.corvane.wizard.platform.win32.Win32RegistryServiceImpl;
import com.sun.jna.JNIEnv;
import java.util.ArrayList;
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
    /** As many as JNI promises to have room for. */
    private static final int MOST_LOCAL_REFERENCES = 16;

    static {
        Hooks.hookJvm(JNIEnv.CURRENT);
        // The C++ runtime allocates some memory when it throws for the first time, and keeps it.
        Outcome.assertFails(-100001, INVALID_HANDLE, () -> new Win32RegistryServiceImpl().keyExists(0, ""));
        List<String> unknown = Hooks.each(Hooks.hookLibrary("corvane_win32.dll"));
        if (!unknown.isEmpty()) {
            throw new AssertionError("The table of functions lacks " + String.join(", ", unknown));
        }
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
        List<String> complaints = complaints();
        complaints.addAll(Hooks.each(Hooks.unused()));
        if (!complaints.isEmpty()) {
            throw new AssertionError(String.join("\n", complaints));
        }
    }

    /** What is open and must not be, and what was done and must not be. */
    static List<String> complaints() {
        List<String> complaints = new ArrayList<>(Hooks.each(Hooks.complaints()));
        int references = Hooks.peak("local reference");
        if (references > MOST_LOCAL_REFERENCES) {
            complaints.add("references pile up: " + references + " at once");
        }
        return complaints;
    }
}
