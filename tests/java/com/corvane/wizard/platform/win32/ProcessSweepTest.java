package com.corvane.wizard.platform.win32;

import com.corvane.testing.Call;
import com.corvane.testing.FaultSweep;
import com.corvane.testing.TestBed;
import com.corvane.testing.Windows;
import java.util.List;
import org.junit.jupiter.api.DynamicTest;
import org.junit.jupiter.api.TestFactory;
import org.junit.jupiter.api.extension.ExtendWith;

/** Every call fails once of those that run a program. */
@ExtendWith(TestBed.class)
class ProcessSweepTest {

    private static final String RUNS = "CreatePipe: 1, 0 q0x7004, 1 q0x7008; CreatePipe: 1, 0 q0x7104, 1 q0x7108;"
            + " GetStdHandle: 0x7300*; WaitForSingleObject: 0*; GetExitCodeProcess: 1, 1 n7; PeekNamedPipe: 1, 4 n1;"
            + " ReadFile: 1, 1 'a', 3 n1; PeekNamedPipe: 1*";
    private static final String LIST = "GetUserObjectSecurity: 0/122, 4 n48; GetUserObjectSecurity: 1, 2"
            + " x010004800000000000000000000000001400000002001C000100000000021400FF010F00010100000000000512000000";
    private static final String DESKTOP = "LogonUserA: 1, 5 q0x7018; GetProcessWindowStation: 0x50;"
            + " OpenWindowStationA: 0x54; SetProcessWindowStation: 1*; OpenDesktopA: 0x58;"
            + " GetTokenInformation: 0/122, 4 n24; GetTokenInformation: 1, 2 n1 n0 q0x22 n0xC0000007 n0; GetLengthSid: 20;"
            + " CopySid: 1, 1 x010300000000000505000000AA000000BB000000; " + LIST + "; " + LIST
            + "; SetUserObjectSecurity: 1*; ImpersonateLoggedOnUser: 1; RevertToSelf: 1*";

    /** The streams are closed whatever fails; what fails then is of no consequence. */
    private static final String[] ALWAYS = {
        "(CreatePipe|DuplicateHandle) => done then (GetStdHandle|CreatePipe)",
        "(WaitForInputIdle|PeekNamedPipe|ReadFile|WaitForSingleObject|GetExitCodeProcess) => done then .*",
        "(GetVersionExA 156|FormatMessage.|SetProcessWindowStation 80) => done then .*",
        "WideCharToMultiByte => -110200 without a message or error 1113 or done then .*",
        "(malloc|calloc|realloc) => -110200 without a message or done then .*",
        "GetMethodID => -110200 without a message or done then .*",
        "(NewGlobalRef|GetObjectClass|CallObjectMethodV|CallVoidMethodV|GetStringChars|NewString) => thrown or done then .*"};

    /** Who fails to be let in leaves the desktop, and the log is told. */
    private static final String REFUSED = ".* => error 1450 then (SetProcessWindowStation 80|CloseWindowStation"
            + "|CloseDesktop|RevertToSelf|NewGlobalRef)";

    /** The process has its window station again, and the thread is itself. */
    private static boolean isGivenBack(String failed, String outcome, String state) {
        List<Call> stations = Call.of("SetProcessWindowStation");
        long impersonated = Call.of("ImpersonateLoggedOnUser").size();
        return (stations.isEmpty() || stations.get(stations.size() - 1).number(0) == 0x50)
                && Call.of("RevertToSelf").size() == (failed.startsWith("Impersonate") ? 0 : impersonated);
    }

    @TestFactory
    List<DynamicTest> programs() {
        FaultSweep sweep = new FaultSweep(() -> {}, () -> "");
        sweep.add("nativeExecuteProcess [x, -q] 0 with CreateProcessA: 1, 9 q0x7204 q0x7208; " + RUNS, -110203)
                .after(ALWAYS).after("CreateProcessA => error 1450 then GetMethodID getStdOutputStream");
        List<DynamicTest> tests = sweep.on(Windows.W98, Windows.W10);
        FaultSweep otherUser = new FaultSweep(() -> {}, () -> "");
        otherUser.add("nativeExecuteProcess [x, -q, u, p, g] 0 with CreateProcessAsUserA: 1, 10 q0x7204 q0x7208; "
                + DESKTOP + "; " + RUNS, -110202).after(ALWAYS).after(REFUSED).tells(ProcessSweepTest::isGivenBack);
        tests.addAll(otherUser.on(Windows.XP));
        FaultSweep service = new FaultSweep(() -> {}, () -> "");
        service.add("nativeExecuteProcess [x, -q, u, p, g] 0 with LogonUserA: 0/5; LogonUserA: 1, 5 q0x7018;"
                + " CreateProcessWithLogonW: 1, 10 q0x7204 q0x7208; WaitForSingleObject: 0*;"
                + " GetExitCodeProcess: 1, 1 n7", -110202).after(ALWAYS)
                .after("(WideCharToMultiByte|LogonUserA) => error 5 then NewGlobalRef",
                        ".* => error 1450 then (NewGlobalRef|GetMethodID getStdOutputStream)");
        tests.addAll(service.on(Windows.W2000));
        return tests;
    }
}
