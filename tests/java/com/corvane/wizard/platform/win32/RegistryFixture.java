package com.corvane.wizard.platform.win32;

import static com.corvane.testing.Bytes.latin1;
import static com.corvane.testing.Bytes.number;
import static com.corvane.testing.Bytes.utf16;

import com.corvane.testing.RawRegistry;

/** The registry that tests read and change: below {@link #KEY}, one value of each kind and a tree. */
public final class RegistryFixture {

    static final int HKCU = Win32RegistryServiceImpl.HKEY_CURRENT_USER;
    static final String KEY = RawRegistry.KEY;
    static final String MISSING = KEY + "\\missing";

    static final int SZ = Win32RegistryServiceImpl.REG_SZ;
    static final int EXPAND_SZ = Win32RegistryServiceImpl.REG_EXPAND_SZ;
    static final int BINARY = Win32RegistryServiceImpl.REG_BINARY;
    static final int DWORD = Win32RegistryServiceImpl.REG_DWORD;
    static final int MULTI_SZ = Win32RegistryServiceImpl.REG_MULTI_SZ;

    /** Longer than the first buffer of every read. */
    static final String LONG_TEXT = "0123456789".repeat(120);

    private RegistryFixture() {}

    /** Makes the key anew with everything in it. */
    public static void fill() {
        RawRegistry.deleteTree(KEY);
        RawRegistry.createKey(KEY + "\\tree\\branch\\leaf");
        RawRegistry.createKey(KEY + "\\tree\\other");
        RawRegistry.createKey(KEY + "\\second");
        RawRegistry.createLink(KEY + "\\tree\\link", KEY + "\\second");
        RawRegistry.set(KEY, "", SZ, utf16("default\0"));
        RawRegistry.set(KEY, "text", SZ, utf16("some text\0"));
        RawRegistry.set(KEY, "long", SZ, utf16(LONG_TEXT + "\0"));
        RawRegistry.set(KEY, "path", EXPAND_SZ, utf16("%CORVANE_BED%;rest\0"));
        RawRegistry.set(KEY, "number", DWORD, number(0x12345678));
        RawRegistry.set(KEY, "binary", BINARY, latin1("\0\1\2\377"));
        RawRegistry.set(KEY, "list", MULTI_SZ, utf16("first\0second\0\0"));
        RawRegistry.set(KEY, "long list", MULTI_SZ, utf16(LONG_TEXT + "\0" + LONG_TEXT + "\0\0"));
    }
}
