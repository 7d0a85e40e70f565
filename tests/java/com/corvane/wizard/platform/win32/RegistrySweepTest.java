package com.corvane.wizard.platform.win32;

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

    /**
     * What may be a link is deleted as one, which does for any key; without the means for that it stays, and
     * so it does where it cannot be told why.
     */
    static final String[] LINKS = {
        "(GetModuleHandleA ntdll.dll|GetProcAddress NtQueryValueKey|DuplicateHandle|NtQueryValueKey) => done then .*",
        "(GetModuleHandleA ntdll.dll|GetProcAddress NtDeleteKey) => error 127 then GetModuleHandleA ntdll.dll",
        "(GetModuleHandleA ntdll.dll|GetProcAddress RtlNtStatusToDosError) => error 127"};

    @TestFactory
    List<DynamicTest> everyCallFails() {
        FaultSweep sweep = new FaultSweep(RegistryFixture::fill, () -> RawRegistry.dump(RawRegistry.KEY));
        sweep.add("keyExists HKCU KEY", -100001);
        sweep.add("keyExists 9 KEY", -100001);
        // A tree is deleted key by key, so a failure may leave a part of it; but what a link in it leads to stays.
        for (String key : List.of("tree", "second")) {
            sweep.add("deleteKey HKCU KEY " + key + " true", -100002)
                    .after(LINKS)
                    .tells((failed, outcome, state) -> outcome.equals("done")
                            ? !state.contains(key + "]") : state.contains("second]") && state.contains(key + "]"));
        }
        sweep.add("deleteKey HKCU KEY missing true", -100002);
        sweep.add("deleteValue HKCU KEY text true", -100002);
        for (String inquiry : List.of("isKeyEmpty", "countSubKeys", "countValuesInKey", "longestSubKeyNameLength",
                "longestValueNameLength", "longestValueNameData")) {
            sweep.add(inquiry + " HKCU KEY", -100003);
        }
        sweep.add("setStringValue HKCU KEY new false text", -100004);
        sweep.add("setMultiStringValue HKCU KEY new [first, null, third]", -100005);
        sweep.add("setMultiStringValue HKCU KEY new null", -100005);
        sweep.add("set32BitValue HKCU KEY new 7", -100006);
        sweep.add("setBinaryValue HKCU KEY new x010203", -100007);
        sweep.add("getStringValue HKCU KEY text false", -100008);
        sweep.add("getStringValue HKCU KEY long false", -100008);
        sweep.add("getStringValue HKCU KEY path true", -100008).after(
                "ExpandEnvironmentStrings[AW] => ''", "(WideCharToMultiByte|MultiByteToWideChar) => '' or error 1113");
        sweep.add("getStringValue HKCU KEY\\missing text false", -100008);
        sweep.add("get32BitValue HKCU KEY number", -100008);
        sweep.add("getMultiStringValue HKCU KEY list", -100009);
        sweep.add("getMultiStringValue HKCU KEY 'long list'", -100009);
        sweep.add("getBinaryValue HKCU KEY binary", -100010);
        sweep.add("getBinaryValue HKCU KEY text", -100010);
        sweep.add("getValueType HKCU KEY list", -100011);
        sweep.add("createKey HKCU KEY new", -100012);
        sweep.add("getSubkeyNames HKCU KEY", -100013);
        sweep.add("valueExists HKCU KEY text", -100014);
        sweep.add("getKeyValueNames HKCU KEY", -100000);
        return sweep.on(Windows.W98, Windows.W10);
    }
}
