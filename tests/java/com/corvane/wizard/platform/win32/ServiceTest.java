package com.corvane.wizard.platform.win32;

import static com.corvane.testing.Outcome.assertFails;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.corvane.testing.Folder;
import com.corvane.testing.TestBed;
import com.corvane.wizard.platform.win32.win32service.NTServiceConfig;
import com.corvane.wizard.platform.win32.win32service.NTServiceStatus;
import com.sun.jna.platform.win32.W32Service;
import com.sun.jna.platform.win32.W32ServiceManager;
import com.sun.jna.platform.win32.Winsvc.SERVICE_STATUS_PROCESS;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.List;
import java.util.concurrent.Callable;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.extension.ExtendWith;

/** The life of a service with the system's own service manager and a program that runs as one. */
@ExtendWith(TestBed.class)
class ServiceTest {

    private static final String NAME = "CorvaneTest";
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

    private void await(Callable<Boolean> truth) throws Exception {
        for (int tries = 0; !truth.call(); ++tries) {
            assertTrue(tries < 600, "waited in vain");
            Thread.sleep(50);
        }
    }

    private void await(int state) throws Exception {
        await(() -> services.queryNTServiceStatus(NAME).getCurrentState() == state);
    }

    private boolean lists(int state) throws Exception {
        return List.of(services.enumNTServiceKeys(Win32ServiceImpl.SERVICE_WIN32, state)).contains(NAME);
    }

    private static SERVICE_STATUS_PROCESS othersSee() {
        try (W32ServiceManager manager = new W32ServiceManager(1); W32Service service = manager.openService(NAME, 4)) {
            return service.queryStatus();
        }
    }

    /** What one of the system's own tools prints. */
    private static String prints(String... command) throws Exception {
        return new String(new ProcessBuilder(command).start().getInputStream().readAllBytes(), StandardCharsets.UTF_8);
    }

    /** Wine tells of no dependencies. Deleted while it runs, it is there until it has stopped; its program may go on for a moment after that. */
    @Test
    void isMadeDescribedStartedControlledAndStopped() throws Exception {
        NTServiceConfig config = config();
        assertEquals("\"a b\" \"a b\" c", NTServiceConfig.quotedCommand("a b", null) + ' '
                + NTServiceConfig.quotedCommand("a b", "c"));
        config.setLoadOrderGroup("Group");
        config.setPassword("secret");
        services.createNTService(NAME, config);
        config.setUserName("LocalSystem");
        config.setDependencies(services.queryNTServiceConfig(NAME).getDependencies());
        assertEquals(config.toString(), services.queryNTServiceConfig(NAME).toString());
        for (String text : new String[] {"What it does \u8868", null}) {
            services.changeWin2kServiceDescription(NAME, text);
            assertEquals(text, services.queryWin2kServiceDescription(NAME));
        }
        assertFails(-120000, 1073, () -> services.createNTService(NAME, config));
        assertEquals(List.of(SHOWN, NAME),
                List.of(services.getNTServiceDisplayName(NAME), services.getNTServiceKeyName(SHOWN)));
        assertTrue(lists(Win32ServiceImpl.SERVICE_INACTIVE) && lists(Win32ServiceImpl.SERVICE_STATE_ALL));
        services.startNTService(NAME, new String[] {"with blanks", "\u8868"});
        await(NTServiceStatus.SERVICE_RUNNING);
        assertTrue(lists(Win32ServiceImpl.SERVICE_ACTIVE) && !lists(Win32ServiceImpl.SERVICE_INACTIVE));
        assertTrue(prints("net", "start").contains("Corvane "));
        services.controlNTService(NAME, Win32ServiceImpl.SERVICE_CONTROL_PAUSE);
        await(NTServiceStatus.SERVICE_PAUSED);
        assertTrue(prints("sc", "query", NAME).contains("PAUSED"));
        services.controlNTService(NAME, Win32ServiceImpl.SERVICE_CONTROL_CONTINUE);
        await(NTServiceStatus.SERVICE_RUNNING);
        services.controlNTService(NAME, 200);
        int process = services.queryWin2kServiceStatusProcess(NAME).getProcessId();
        ProcessHandle program = ProcessHandle.of(process).orElseThrow();
        assertEquals(process, othersSee().dwProcessId);
        services.deleteNTService(NAME);
        assertFails(-120000, 1072, () -> services.createNTService(NAME, config));
        assertEquals("NTServiceStatus[serviceType=16, currentState=3, controlsAccepted=0, win32ExitCode=1066, "
                + "serviceSpecificExitCode=7, checkPoint=3, waitHint=4]",
                services.controlNTService(NAME, Win32ServiceImpl.SERVICE_CONTROL_STOP).toString());
        await(() -> !services.serviceExists(NAME) && !program.isAlive());
        assertEquals(List.of(NAME, "with blanks", "\u8868", "control 2", "control 3", "control 200", "control 1"),
                Files.readAllLines(record, StandardCharsets.UTF_16LE));
    }
}
