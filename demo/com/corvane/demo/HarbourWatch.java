package com.corvane.demo;

import com.corvane.wizard.platform.win32.Win32ServiceImpl;
import com.corvane.wizard.platform.win32.win32service.NTServiceConfig;
import com.corvane.wizard.platform.win32.win32service.NTServiceStatus;
import com.corvane.wizard.service.ServiceException;
import java.io.IOException;
import java.nio.channels.FileChannel;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.NoSuchFileException;
import java.nio.file.Path;
import java.nio.file.StandardOpenOption;
import java.util.Arrays;
import java.util.List;

/** The service of the small product: its program records what it is told while it runs. */
final class HarbourWatch {
    static final String NAME = "HarbourWatch";
    static final String TITLE = "Harbour Watch";
    static final String PROGRAM = "watch.exe";

    /** A line for its name and each argument when it starts, then one for each control. */
    static final Path RECORD = Product.ROOT.resolve("watch.log");

    /** With which it ends when it is told to stop. */
    static final int EXIT_CODE = 7;

    /** Where Windows keeps what it knows of the service. */
    static final String KEY = "HKLM\\SYSTEM\\CurrentControlSet\\Services\\" + NAME;

    /** Both paths have blanks in them. */
    static final String COMMAND = NTServiceConfig.quotedCommand(
            Product.installed(PROGRAM), '"' + RECORD.toString() + '"');

    private HarbourWatch() {}

    static List<String> record() throws IOException {
        return Files.readAllLines(RECORD, StandardCharsets.UTF_16LE);
    }

    /** As the JDK sees it: what runs cannot be opened for writing. */
    static boolean isProgramInUse() {
        try {
            FileChannel.open(Product.FOLDER.resolve(PROGRAM), StandardOpenOption.WRITE).close();
            return false;
        } catch (NoSuchFileException e) {
            return false;
        } catch (IOException e) {
            return true;
        }
    }

    /** Whether it is among the services in that state. */
    static boolean isListed(int state) throws ServiceException {
        return Arrays.asList(new Win32ServiceImpl().enumNTServiceKeys(
                Win32ServiceImpl.SERVICE_WIN32, state)).contains(NAME);
    }

    /** Waits for a state; returns the one that it is in. */
    static int stateOnceIn(int state) throws Exception {
        Win32ServiceImpl services = new Win32ServiceImpl();
        return Waiting.forAnswer(
                current -> current == state,
                () -> services.queryNTServiceStatus(NAME).getCurrentState());
    }

    /** Tells it to stop, and waits: it ends a moment after it has said that it is stopped. */
    static void stop() throws Exception {
        new Win32ServiceImpl().controlNTService(NAME, Win32ServiceImpl.SERVICE_CONTROL_STOP);
        stateOnceIn(NTServiceStatus.SERVICE_STOPPED);
        Waiting.forAnswer(inUse -> !inUse, HarbourWatch::isProgramInUse);
    }
}
