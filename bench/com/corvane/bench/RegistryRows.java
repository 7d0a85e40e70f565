package com.corvane.bench;

import static com.corvane.wizard.platform.win32.Win32RegistryServiceImpl.HKEY_CURRENT_USER;
import static com.sun.jna.platform.win32.Advapi32Util.registryGetBinaryValue;
import static com.sun.jna.platform.win32.Advapi32Util.registryGetIntValue;
import static com.sun.jna.platform.win32.Advapi32Util.registryGetStringValue;
import static com.sun.jna.platform.win32.Advapi32Util.registryGetValues;
import static com.sun.jna.platform.win32.Advapi32Util.registryKeyExists;
import static com.sun.jna.platform.win32.Advapi32Util.registrySetStringValue;

import com.corvane.wizard.platform.win32.Win32RegistryServiceImpl;
import com.corvane.wizard.service.ServiceException;
import com.sun.jna.platform.win32.WinReg;
import java.util.List;
import java.util.prefs.BackingStoreException;
import java.util.prefs.Preferences;

/** Registry work on a key that is made for it, and on a node of the user's preferences. */
final class RegistryRows implements RowGroup {
    // bench_key.h has the same names for the calls made bare.
    private static final String KEY = "Software\\Corvane Bench";
    private static final String LIST = KEY + "\\List";
    private static final int LIST_LENGTH = 100;
    private static final String TEXT = "C:\\Program Files\\Harbour Notes";
    private static final byte[] BYTES = new byte[4096];

    private static final int ROOT = HKEY_CURRENT_USER;
    private static final WinReg.HKEY JNA_ROOT = WinReg.HKEY_CURRENT_USER;

    private final Win32RegistryServiceImpl registry = new Win32RegistryServiceImpl();
    private final Preferences node = Preferences.userRoot().node("corvane-bench");
    private final Preferences list = node.node("list");

    RegistryRows() throws ServiceException {
        registry.createKey(ROOT, "Software", "Corvane Bench");
        registry.createKey(ROOT, KEY, "List");
        registry.setStringValue(ROOT, KEY, "String", false, TEXT);
        registry.set32BitValue(ROOT, KEY, "Number", 20417);
        registry.setBinaryValue(ROOT, KEY, "Bytes", BYTES);
        node.put("string", TEXT);
        node.putByteArray("bytes", BYTES);
        for (int i = 0; i < LIST_LENGTH; i++) {
            String name = "Value %02d".formatted(i);
            registry.setStringValue(ROOT, LIST, name, false, TEXT);
            list.put(name, TEXT);
        }
    }

    /**
     * JNA's utilities list names together with their values only. The preferences store nothing but
     * text, bytes as Base64 and no number as such, and answer from memory which nodes exist.
     */
    @Override
    public List<Row> rows() {
        return List.of(
                new Row("read a string", 1,
                        Timed.of(() -> registry.getStringValue(ROOT, KEY, "String", false)),
                        Timed.of(() -> RequiredRegistry.readString(KEY, "String")),
                        BareRegistry::readString,
                        Timed.of(() -> registryGetStringValue(JNA_ROOT, KEY, "String")),
                        Timed.of(() -> node.get("string", null))),
                new Row("read a DWORD", 1,
                        Timed.of(() -> registry.get32BitValue(ROOT, KEY, "Number")),
                        Timed.of(() -> RequiredRegistry.readNumber(KEY, "Number")),
                        BareRegistry::readNumber,
                        Timed.of(() -> registryGetIntValue(JNA_ROOT, KEY, "Number")),
                        null),
                new Row("read 4 KB of bytes", 1,
                        Timed.of(() -> registry.getBinaryValue(ROOT, KEY, "Bytes")),
                        Timed.of(() -> RequiredRegistry.readBytes(KEY, "Bytes")),
                        BareRegistry::readBytes,
                        Timed.of(() -> registryGetBinaryValue(JNA_ROOT, KEY, "Bytes")),
                        Timed.of(() -> node.getByteArray("bytes", null))),
                new Row("list 100 value names", LIST_LENGTH,
                        Timed.of(() -> registry.getKeyValueNames(ROOT, LIST)),
                        Timed.of(() -> RequiredRegistry.listNames(LIST)),
                        BareRegistry::listNames,
                        Timed.of(() -> registryGetValues(JNA_ROOT, LIST).keySet()),
                        Timed.of(list::keys)),
                new Row("write a string", 1,
                        Timed.of(() -> registry.setStringValue(ROOT, KEY, "String", false, TEXT)),
                        Timed.of(() -> RequiredRegistry.writeString(KEY, "String", TEXT)),
                        BareRegistry::writeString,
                        Timed.of(() -> registrySetStringValue(JNA_ROOT, KEY, "String", TEXT)),
                        Timed.of(() -> node.put("string", TEXT))),
                new Row("test a key", 1,
                        Timed.of(() -> registry.keyExists(ROOT, KEY)),
                        Timed.of(() -> RequiredRegistry.testKey(KEY)),
                        BareRegistry::testKey,
                        Timed.of(() -> registryKeyExists(JNA_ROOT, KEY)),
                        null));
    }

    @Override
    public void close() throws ServiceException, BackingStoreException {
        registry.deleteKey(ROOT, "Software", "Corvane Bench", false);
        node.removeNode();
    }
}
