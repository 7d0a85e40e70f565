package com.corvane.testing;

import com.sun.jna.Memory;
import com.sun.jna.NativeLibrary;
import com.sun.jna.Pointer;
import com.sun.jna.WString;
import com.sun.jna.platform.win32.Advapi32Util;
import com.sun.jna.ptr.IntByReference;
import com.sun.jna.ptr.PointerByReference;
import java.nio.charset.StandardCharsets;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;
import java.util.function.Function;

/**
 * The registry below HKEY_CURRENT_USER as it really is, byte by byte, without the library under test.
 */
public final class RawRegistry {

    /** Where the tests work; the extension makes it anew for every test. */
    public static final String KEY = "Software\\Corvane\\Test Bed";

    public static final Pointer USER = new Pointer(0x80000001L);
    public static final Pointer MACHINE = new Pointer(0x80000002L);

    private static final int CREATE_LINK = 2;
    private static final int OPEN_LINK = 8;
    private static final int LINK = 6;
    private static final int ALL_ACCESS = 0xF003F;
    private static final int NO_MORE_ITEMS = 259;

    /** As the system itself calls the user's key. */
    private static final String USER_NAME = Advapi32Util.getAccountByName(Advapi32Util.getUserName()).sidString;

    // Where the system writes; the JVM's checks would complain of arrays.
    private static final Memory NAME = new Memory(1 << 16);
    private static final Memory DATA = new Memory(1 << 20);

    /** A value as it is stored. */
    public record Value(String name, int type, byte[] data) {

        /** Up to the first NUL, or the end. */
        public String text() {
            return new String(data, 0, data.length & ~1, StandardCharsets.UTF_16LE).split("\0", 2)[0];
        }
    }

    private RawRegistry() {}

    static int call(String function, Object... arguments) {
        return NativeLibrary.getInstance("advapi32").getFunction(function).invokeInt(arguments);
    }

    private static boolean succeeds(int result, int orElse) {
        if (result != 0 && result != orElse) {
            throw new IllegalStateException("registry error " + result);
        }
        return result == 0;
    }

    /** Does this with a key, which is made where it is missing. */
    private static <T> T in(String key, int options, Function<Pointer, T> work) {
        PointerByReference opened = new PointerByReference();
        succeeds(call("RegCreateKeyExW", USER, new WString(key), 0, null, options, ALL_ACCESS, null, opened, null), 0);
        try {
            return work.apply(opened.getValue());
        } finally {
            call("RegCloseKey", opened.getValue());
        }
    }

    private static boolean set(Pointer key, String name, int type, byte[] data) {
        DATA.write(0, data, 0, data.length);
        return succeeds(call("RegSetValueExW", key, new WString(name), 0, type, DATA, data.length), 0);
    }

    public static void createKey(String key) {
        in(key, 0, made -> made);
    }

    /** Makes a registry link, which leads to another key. */
    public static void createLink(String key, String target) {
        byte[] path = Bytes.utf16("\\Registry\\User\\" + USER_NAME + "\\" + target);
        in(key, CREATE_LINK, link -> set(link, "SymbolicLinkValue", LINK, path));
    }

    /** Deletes a key with everything in it, links themselves; one that is missing is no failure. */
    public static void deleteTree(String key) {
        in(key, OPEN_LINK, opened -> {
            subkeys(opened).forEach(name -> deleteTree(key + "\\" + name));
            // RegDeleteKey would follow a link.
            return NativeLibrary.getInstance("ntdll").getFunction("NtDeleteKey").invokeInt(new Object[] {opened});
        });
    }

    private static List<String> subkeys(Pointer key) {
        List<String> names = new ArrayList<>();
        IntByReference length = new IntByReference((int) NAME.size() / 2);
        while (succeeds(call("RegEnumKeyExW", key, names.size(), NAME, length, null, null, null, null),
                NO_MORE_ITEMS)) {
            names.add(NAME.getWideString(0));
            length.setValue((int) NAME.size() / 2);
        }
        return names;
    }

    private static List<Value> values(Pointer key) {
        List<Value> values = new ArrayList<>();
        IntByReference length = new IntByReference((int) NAME.size() / 2);
        IntByReference type = new IntByReference();
        IntByReference size = new IntByReference((int) DATA.size());
        while (succeeds(call("RegEnumValueW", key, values.size(), NAME, length, null, type, DATA, size),
                NO_MORE_ITEMS)) {
            values.add(new Value(NAME.getWideString(0), type.getValue(), DATA.getByteArray(0, size.getValue())));
            length.setValue((int) NAME.size() / 2);
            size.setValue((int) DATA.size());
        }
        return values;
    }

    public static void set(String key, String name, int type, byte[] data) {
        in(key, 0, opened -> set(opened, name, type, data));
    }

    /** The names of the keys in a key, which is made where it is missing. */
    public static List<String> subkeys(String key) {
        return in(key, 0, RawRegistry::subkeys);
    }

    public static List<Value> values(String key) {
        return in(key, 0, RawRegistry::values);
    }

    /** Has a root lead into a key for this process, or, for null, where it always leads. */
    public static void lead(Pointer root, String key) {
        succeeds(key == null ? call("RegOverridePredefKey", root, null)
                : in(key, 0, to -> call("RegOverridePredefKey", root, to)), 0);
    }

    /** Null when there is no such value. */
    public static byte[] data(String key, String name) {
        return values(key).stream().filter(value -> value.name().equals(name)).findAny().map(Value::data).orElse(null);
    }

    /** All keys, values, types and data of a tree as text. */
    public static String dump(String key) {
        StringBuilder text = new StringBuilder("[" + key + "]\n");
        values(key).forEach(value -> text.append(value.name()).append(' ').append(value.type()).append(' ')
                .append(Arrays.toString(value.data())).append('\n'));
        subkeys(key).forEach(name -> text.append(dump(key + "\\" + name)));
        return text.toString();
    }
}
