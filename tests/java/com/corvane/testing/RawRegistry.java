package com.corvane.testing;

import com.sun.jna.Memory;
import com.sun.jna.NativeLibrary;
import com.sun.jna.WString;
import com.sun.jna.platform.win32.Advapi32Util;
import com.sun.jna.platform.win32.WinNT;
import com.sun.jna.platform.win32.WinReg;
import com.sun.jna.platform.win32.WinReg.HKEY;
import com.sun.jna.platform.win32.WinReg.HKEYByReference;
import com.sun.jna.ptr.IntByReference;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;
import java.util.function.Function;
import java.util.stream.Stream;

/**
 * The registry below HKEY_CURRENT_USER as it really is, byte by byte, without the library under test.
 */
public final class RawRegistry {

    /** Where the tests work; the extension makes it anew for every test. */
    public static final String KEY = "Software\\Corvane\\Test Bed";

    private static final int CREATE_LINK = 2;
    private static final int OPEN_LINK = 8;
    private static final int LINK = 6;

    /** As the system itself calls the user's key. */
    private static final String USER_NAME = Advapi32Util.getAccountByName(Advapi32Util.getUserName()).sidString;

    // Where the system writes; the JVM's checks would complain of arrays.
    private static final Memory NAME = new Memory(1 << 16);
    private static final Memory DATA = new Memory(1 << 20);

    private RawRegistry() {}

    static int call(String function, Object... arguments) {
        return NativeLibrary.getInstance("advapi32").getFunction(function).invokeInt(arguments);
    }

    static void require(int result) {
        if (result != 0) {
            throw new IllegalStateException("registry error " + result);
        }
    }

    /** Does this with a key, which is made where it is missing. */
    private static <T> T in(String key, int options, Function<HKEY, T> work) {
        HKEYByReference opened = new HKEYByReference();
        require(call("RegCreateKeyExW", WinReg.HKEY_CURRENT_USER, new WString(key), 0, null, options,
                WinNT.KEY_ALL_ACCESS, null, opened, null));
        try {
            return work.apply(opened.getValue());
        } finally {
            call("RegCloseKey", opened.getValue());
        }
    }

    private static void set(String key, int options, String name, int type, byte[] data) {
        DATA.write(0, data, 0, data.length);
        require(in(key, options, opened ->
                call("RegSetValueExW", opened, new WString(name), 0, type, DATA, data.length)));
    }

    public static void set(String key, String name, int type, byte[] data) {
        set(key, 0, name, type, data);
    }

    public static void createKey(String key) {
        in(key, 0, made -> made);
    }

    /** Makes a registry link, which leads to another key. */
    public static void createLink(String key, String target) {
        byte[] path = Bytes.utf16("\\Registry\\User\\" + USER_NAME + "\\" + target);
        set(key, CREATE_LINK, "SymbolicLinkValue", LINK, path);
    }

    /** Deletes a key with everything in it, links themselves; one that is missing is no failure. */
    public static void deleteTree(String key) {
        in(key, OPEN_LINK, opened -> {
            all("RegEnumKeyExW", opened).forEach(name -> deleteTree(key + "\\" + name));
            // RegDeleteKey would follow a link.
            require(NativeLibrary.getInstance("ntdll").getFunction("NtDeleteKey").invokeInt(new Object[] {opened}));
            return null;
        });
    }

    /** What a function enumerates: the names of keys; the names of values, with their types and data. */
    private static List<String> all(String function, HKEY key) {
        IntByReference type = function.equals("RegEnumValueW") ? new IntByReference() : null;
        List<String> found = new ArrayList<>();
        while (true) {
            IntByReference length = new IntByReference((int) NAME.size() / 2);
            IntByReference size = type == null ? null : new IntByReference((int) DATA.size());
            Memory data = type == null ? null : DATA;
            if (call(function, key, found.size(), NAME, length, null, type, data, size) != 0) {
                return found;
            }
            found.add(NAME.getWideString(0) + (type == null ? ""
                    : " " + type.getValue() + " " + Arrays.toString(DATA.getByteArray(0, size.getValue()))));
        }
    }

    /**
     * Makes these keys below the tests' key, and has HKLM lead to "machine" below it for this process, and HKCU to
     * "user"; for none, both lead where they always do.
     */
    static void lead(String... keys) {
        call("RegOverridePredefKey", WinReg.HKEY_CURRENT_USER, null);
        call("RegOverridePredefKey", WinReg.HKEY_LOCAL_MACHINE, null);
        if (keys.length != 0) {
            Stream.of(keys).forEach(key -> createKey(KEY + "\\" + key));
            require(in(KEY + "\\machine", 0, key -> call("RegOverridePredefKey", WinReg.HKEY_LOCAL_MACHINE, key)));
            require(in(KEY + "\\user", 0, key -> call("RegOverridePredefKey", WinReg.HKEY_CURRENT_USER, key)));
        }
    }

    /** All keys, values, types and data of a tree as text. */
    public static String dump(String key) {
        return in(key, 0, opened -> {
            List<String> lines = new ArrayList<>(List.of("[" + key + "]"));
            lines.addAll(all("RegEnumValueW", opened));
            all("RegEnumKeyExW", opened).forEach(name -> lines.add(dump(key + "\\" + name)));
            return String.join("\n", lines);
        });
    }
}
