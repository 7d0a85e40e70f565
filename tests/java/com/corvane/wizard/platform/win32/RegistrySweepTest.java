package com.corvane.wizard.platform.win32;

import static com.corvane.wizard.platform.win32.RegistryFixture.HKCU;
import static com.corvane.wizard.platform.win32.RegistryFixture.KEY;
import static com.corvane.wizard.platform.win32.RegistryFixture.MISSING;

import com.corvane.testing.FaultSweep;
import com.corvane.testing.RawRegistry;
import com.corvane.testing.TestBed;
import com.corvane.testing.Windows;
import java.util.List;
import org.junit.jupiter.api.DynamicTest;
import org.junit.jupiter.api.TestFactory;
import org.junit.jupiter.api.extension.ExtendWith;

/** Every call of every native of the registry fails once. */
@ExtendWith(TestBed.class)
class RegistrySweepTest {

    /** What may be a link is deleted as one, which does for any key; without the means for that it stays. */
    private static final FaultSweep.Judge LINKS = (failed, outcome, state) ->
            failed.matches("GetModuleHandleA|GetProcAddress|DuplicateHandle|NtQueryValueKey")
                    && (outcome.isFailure(-100002, 127) || !outcome.isException());

    @TestFactory
    List<DynamicTest> everyCallFails() {
        Win32RegistryServiceImpl registry = new Win32RegistryServiceImpl();
        FaultSweep sweep = new FaultSweep(RegistryFixture::fill, () -> RawRegistry.dump(KEY));
        sweep.add("keyExists", -100001, () -> registry.keyExists(HKCU, KEY));
        sweep.add("keyExists of a bad root", -100001, () -> registry.keyExists(9, KEY));
        // A tree is deleted key by key, so a failure may leave a part of it; but what a link in it leads to stays.
        sweep.addVoid("deleteKey", -100002, () -> registry.deleteKey(HKCU, KEY, "tree", true))
                .accepts(LINKS).allows(state -> state.contains("[" + KEY + "\\second]"));
        sweep.addVoid("deleteKey of a leaf", -100002, () -> registry.deleteKey(HKCU, KEY, "second", true))
                .accepts(LINKS);
        sweep.addVoid("deleteKey that is missing", -100002, () -> registry.deleteKey(HKCU, KEY, "missing", true));
        sweep.addVoid("deleteValue", -100002, () -> registry.deleteValue(HKCU, KEY, "text", true));
        sweep.add("isKeyEmpty", -100003, () -> registry.isKeyEmpty(HKCU, KEY));
        sweep.add("countSubKeys", -100003, () -> registry.countSubKeys(HKCU, KEY));
        sweep.add("countValuesInKey", -100003, () -> registry.countValuesInKey(HKCU, KEY));
        sweep.add("longestSubKeyNameLength", -100003, () -> registry.longestSubKeyNameLength(HKCU, KEY));
        sweep.add("longestValueNameLength", -100003, () -> registry.longestValueNameLength(HKCU, KEY));
        sweep.add("longestValueNameData", -100003, () -> registry.longestValueNameData(HKCU, KEY));
        sweep.addVoid("setStringValue", -100004, () -> registry.setStringValue(HKCU, KEY, "new", false, "text"));
        sweep.addVoid("setMultiStringValue", -100005,
                () -> registry.setMultiStringValue(HKCU, KEY, "new", new String[] {"first", null, "third"}));
        sweep.addVoid("setMultiStringValue of null", -100005,
                () -> registry.setMultiStringValue(HKCU, KEY, "new", null));
        sweep.addVoid("set32BitValue", -100006, () -> registry.set32BitValue(HKCU, KEY, "new", 7));
        sweep.addVoid("setBinaryValue", -100007,
                () -> registry.setBinaryValue(HKCU, KEY, "new", new byte[] {1, 2, 3}));
        sweep.add("getStringValue", -100008, () -> registry.getStringValue(HKCU, KEY, "text", false));
        sweep.add("getStringValue, long", -100008, () -> registry.getStringValue(HKCU, KEY, "long", false));
        sweep.add("getStringValue, expanded", -100008, () -> registry.getStringValue(HKCU, KEY, "path", true));
        sweep.add("getStringValue of a missing key", -100008,
                () -> registry.getStringValue(HKCU, MISSING, "text", false));
        sweep.add("get32BitValue", -100008, () -> registry.get32BitValue(HKCU, KEY, "number"));
        sweep.add("getMultiStringValue", -100009, () -> registry.getMultiStringValue(HKCU, KEY, "list"));
        sweep.add("getMultiStringValue, long", -100009, () -> registry.getMultiStringValue(HKCU, KEY, "long list"));
        sweep.add("getBinaryValue", -100010, () -> registry.getBinaryValue(HKCU, KEY, "binary"));
        sweep.add("getBinaryValue of a text", -100010, () -> registry.getBinaryValue(HKCU, KEY, "text"));
        sweep.add("getValueType", -100011, () -> registry.getValueType(HKCU, KEY, "list"));
        sweep.addVoid("createKey", -100012, () -> registry.createKey(HKCU, KEY, "new"));
        sweep.add("getSubkeyNames", -100013, () -> registry.getSubkeyNames(HKCU, KEY));
        sweep.add("valueExists", -100014, () -> registry.valueExists(HKCU, KEY, "text"));
        sweep.add("getKeyValueNames", -100000, () -> registry.getKeyValueNames(HKCU, KEY));
        return sweep.on(Windows.W98, Windows.W10);
    }
}
