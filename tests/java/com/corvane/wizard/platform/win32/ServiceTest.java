package com.corvane.wizard.platform.win32;

import static com.corvane.testing.Outcome.assertFails;
import static com.sun.jna.platform.win32.WinReg.HKEY_LOCAL_MACHINE;
import static org.junit.jupiter.api.Assertions.assertArrayEquals;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.corvane.testing.Folder;
import com.corvane.testing.TestBed;
import com.corvane.wizard.platform.win32.win32service.NTServiceConfig;
import com.corvane.wizard.platform.win32.win32service.NTServiceStatus;
import com.corvane.wizard.platform.win32.win32service.Win2kServiceFailureActions;
import com.sun.jna.platform.win32.Advapi32Util;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.List;
import java.util.stream.Stream;
import org.junit.jupiter.api.AfterEach;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.Timeout;
import org.junit.jupiter.api.extension.ExtendWith;

/** The life of a service with the system's own service manager and a program that runs as one. */
@ExtendWith(TestBed.class)
@Timeout(60)
class ServiceTest {

    private static final String NAME = "CorvaneTest";
    private static final String KEY = "SYSTEM\\CurrentControlSet\\Services\\" + NAME;
    private static final String SHOWN = "Corvane \u00dcbersicht";

    private final Win32ServiceImpl services = new Win32ServiceImpl();
    private final Folder folder = Folder.named("a service");
    private final Path record = Path.of(folder.path("record of it.txt"));

    /** With the program's path and its argument in quotes of their own. */
    private NTServiceConfig config() throws Exception {
        String program = folder.path("service program.exe");
        Files.copy(Path.of(System.getProperty("corvane.test.service")), Path.of(program));
        return new NTServiceConfig(SHOWN, NTServiceConfig.quotedCommand(program, '"' + record.toString() + '"'));
    }

    /** A test that fails leaves nothing in the way of the next run. */
    @AfterEach
    void end() throws Exception {
        for (String order : List.of("stop", "delete")) {
            new ProcessBuilder("sc", order, NAME).start().waitFor();
        }
    }

    private void await(int state) throws Exception {
        AfterwardsTest.await(() -> services.queryNTServiceStatus(NAME).getCurrentState() == state);
    }

    /**
     * Wine tells of no dependencies. Deleted while it runs, it is there until it has stopped; its program may go on for
     * a moment after that.
     */
    @Test
    void isMadeDescribedStartedControlledAndStopped() throws Exception {
        NTServiceConfig config = config();
        assertEquals("\"a b\"\"a b\"\"a b\" c", NTServiceConfig.quotedCommand("a b", null)
                + NTServiceConfig.quotedCommand("a b", "") + NTServiceConfig.quotedCommand("a b", "c"));
        assertThrows(NullPointerException.class, () -> NTServiceConfig.quotedCommand(null, ""));
        config.setLoadOrderGroup("Group");
        config.setPassword("secret");
        String[] needed = {"RpcSs", "PlugPlay"};
        config.setDependencies(needed);
        needed[0] = config.getDependencies()[1] = "neither of its own";
        services.createNTService(NAME, config);
        assertArrayEquals(new String[] {"RpcSs", "PlugPlay"},
                Advapi32Util.registryGetStringArray(HKEY_LOCAL_MACHINE, KEY, "DependOnService"));
        assertEquals(List.of(0x10, 3, 1), Stream.of("Type", "Start", "ErrorControl")
                .map(name -> Advapi32Util.registryGetIntValue(HKEY_LOCAL_MACHINE, KEY, name)).toList());
        config.setUserName("LocalSystem");
        config.setDependencies(services.queryNTServiceConfig(NAME).getDependencies());
        assertEquals(config.toString(), services.queryNTServiceConfig(NAME).toString());
        for (String text : new String[] {"What it does \u8868", null}) {
            services.changeWin2kServiceDescription(NAME, text);
            assertEquals(text, services.queryWin2kServiceDescription(NAME));
        }
        services.changeWin2kServiceFailureActions(NAME, new Win2kServiceFailureActions());
        assertFails(-120000, 1073, () -> services.createNTService(NAME, config));
        assertEquals(List.of(SHOWN, NAME),
                List.of(services.getNTServiceDisplayName(NAME), services.getNTServiceKeyName(SHOWN)));
        services.startNTService(NAME, new String[] {"with blanks", "\u8868"});
        await(NTServiceStatus.SERVICE_RUNNING);
        assertTrue(List.of(services.enumNTServiceKeys(Win32ServiceImpl.SERVICE_WIN32, Win32ServiceImpl.SERVICE_ACTIVE))
                .contains(NAME));
        services.controlNTService(NAME, Win32ServiceImpl.SERVICE_CONTROL_PAUSE);
        await(NTServiceStatus.SERVICE_PAUSED);
        Process tool = new ProcessBuilder("sc", "query", NAME).start();
        assertTrue(tool.inputReader().lines().anyMatch(line -> line.contains("PAUSED")));
        services.controlNTService(NAME, Win32ServiceImpl.SERVICE_CONTROL_CONTINUE);
        await(NTServiceStatus.SERVICE_RUNNING);
        services.controlNTService(NAME, 200);
        ProcessHandle program =
                ProcessHandle.of(services.queryWin2kServiceStatusProcess(NAME).getProcessId()).orElseThrow();
        services.deleteNTService(NAME);
        assertFails(-120000, 1072, () -> services.createNTService(NAME, config));
        assertEquals("NTServiceStatus[serviceType=16, currentState=3, controlsAccepted=0, win32ExitCode=1066, "
                + "serviceSpecificExitCode=7, checkPoint=3, waitHint=4]",
                services.controlNTService(NAME, Win32ServiceImpl.SERVICE_CONTROL_STOP).toString());
        AfterwardsTest.await(() -> !services.serviceExists(NAME) && !program.isAlive());
        assertEquals(List.of(NAME, "with blanks", "\u8868", "control 2", "control 3", "control 200", "control 1"),
                Files.readAllLines(record, StandardCharsets.UTF_16LE));
    }
}
