package com.corvane.wizard.platform.win32;

import static com.corvane.testing.Outcome.assertFails;
import static org.junit.jupiter.api.Assertions.assertArrayEquals;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.corvane.testing.Outcome;
import com.corvane.wizard.service.ServiceException;
import java.io.ByteArrayOutputStream;
import java.io.File;
import java.io.PipedInputStream;
import java.io.PipedOutputStream;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.List;
import java.util.concurrent.CompletableFuture;
import java.util.concurrent.TimeUnit;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.Timeout;
import org.junit.jupiter.api.io.TempDir;
import org.junit.jupiter.params.ParameterizedTest;
import org.junit.jupiter.params.provider.CsvSource;

/** Programs that really run: what they write, how they end, and that nobody waits for ever. */
@Timeout(value = 120, threadMode = Timeout.ThreadMode.SEPARATE_THREAD)
class ProcessTest {

    private static final String CHILD = System.getProperty("corvane.test.child");
    /** What Wine says now and then when it is busy. */
    private static final int INTERNAL_ERROR = 1359;

    private final Win32SystemUtilServiceImpl system = new Win32SystemUtilServiceImpl();
    private final ByteArrayOutputStream output = new ByteArrayOutputStream();
    private final ByteArrayOutputStream errors = new ByteArrayOutputStream();

    private ProcessRequest run(String command, String arguments, int window) throws ServiceException {
        ProcessRequest request = new ProcessRequest(command, arguments);
        request.setStdOutput(output);
        request.setStdError(errors);
        try {
            system.nativeExecuteProcess(request, window);
        } catch (ServiceException failure) {
            if (failure.getReason() != INTERNAL_ERROR) {
                throw failure;
            }
            system.nativeExecuteProcess(request, window);
        }
        return request;
    }

    private static byte[] pattern(int length) {
        byte[] bytes = new byte[length];
        for (int index = 0; index < length; ++index) {
            bytes[index] = (byte) index;
        }
        return bytes;
    }

    /**
     * What it wrote on both, and how it ended. Of errors that nobody can hand over yet, a temporary file takes
     * what is more than the memory should hold. The last has a child of its own, which keeps the pipes.
     */
    @ParameterizedTest
    @CsvSource({"'', 0, 0, 0", "out=1 exit=1, 1, 0, 1", "out=999 err=1000 exit=4294967295, 999, 1000, -1",
        "out=1000 err=1001 exit=2147483648, 1000, 1001, -2147483648",
        "sleep=300 out=1001 err=999 sleep=300, 1001, 999, 0", "out=10000000, 10000000, 0, 0",
        "err=17000000 out=300000 exit=5, 300000, 17000000, 5", "both=300000, 300000, 300000, 0",
        "out=7 close sleep=500 exit=3, 7, 0, 3", "child=sleep=60000 out=5, 5, 0, 0"})
    void everyByteArrivesAndTheExitCode(String arguments, int out, int err, int exit) throws Exception {
        long begin = System.nanoTime();
        String[] files = temporaryFiles();
        assertEquals(exit, run(CHILD, arguments, ProcessRequest.WINDOW_HIDDEN).getProcessReturnCode());
        assertArrayEquals(pattern(out), output.toByteArray());
        assertArrayEquals(pattern(err), errors.toByteArray());
        assertArrayEquals(files, temporaryFiles());
        assertTrue(!arguments.startsWith("child") || System.nanoTime() - begin < TimeUnit.SECONDS.toNanos(50));
    }

    private static String[] temporaryFiles() {
        return new File(System.getenv("TEMP")).list((folder, name) -> name.startsWith("out"));
    }

    @Test
    void theCommandLineAndTheWindow() throws Exception {
        String longest = "line " + "x".repeat(32_766 - CHILD.length() - 8);
        for (String arguments : List.of("line", "line  \"a b\" '' \\\" %PATH% \u00e9 ", longest)) {
            output.reset();
            run(CHILD, arguments, 0);
            String line = output.toString(System.getProperty("sun.jnu.encoding"));
            assertEquals('"' + CHILD + "\" " + arguments, line);
        }
        output.reset();
        run('"' + CHILD + '"', "window", ProcessRequest.WINDOW_HIDDEN);
        run(CHILD, "window", ProcessRequest.WINDOW_MINIMIZED);
        assertEquals("02", output.toString());
        assertFails(-110203, 2, () -> run("C:\\no such program.exe", "", 0));
        assertEquals(-110203, assertThrows(ServiceException.class, () -> run("", "", 0)).getCode());
    }

    @Test
    void outputIsThereWhileTheProgramRunsAndItsReaderSeesTheEnd() throws Exception {
        PipedInputStream reader = new PipedInputStream();
        ProcessRequest request = new ProcessRequest(CHILD, "out=5 sleep=3000 out=1");
        request.setStdOutput(new PipedOutputStream(reader));
        CompletableFuture<Outcome> call = CompletableFuture.supplyAsync(() ->
                Outcome.ofVoid(() -> system.nativeExecuteProcess(request, 0)));
        assertArrayEquals(pattern(5), reader.readNBytes(5));
        assertTrue(!call.isDone());
        assertArrayEquals(pattern(1), reader.readAllBytes());
        assertEquals("returned nothing", call.get().toString());
    }

    /** What the stream throws is what Java sees. Both are closed, and the program does not hang on its pipe. */
    @Test
    void aReaderThatDoesNotReadOn(@TempDir Path folder) throws Exception {
        Path program = Files.copy(Path.of(CHILD), folder.resolve("child.exe"));
        ProcessRequest request = new ProcessRequest(program.toString(), "both=10000000");
        PipedInputStream reader = new PipedInputStream();
        PipedInputStream errorReader = new PipedInputStream();
        request.setStdOutput(new PipedOutputStream(reader));
        request.setStdError(new PipedOutputStream(errorReader));
        reader.close();
        Outcome outcome = Outcome.ofVoid(() -> system.nativeExecuteProcess(request, 0));
        assertEquals("java.io.IOException: Pipe closed", outcome.toString());
        assertEquals(-1, errorReader.read());
        while (!program.toFile().delete()) { // as long as it runs
            Thread.sleep(50);
        }
    }

    /** Such as one that lacks a method, or whose method throws. Its streams are closed, whatever these throw. */
    @Test
    void requestsOfAnotherKind() {
        for (Object request : new Object[] {null, "text"}) {
            Outcome outcome = Outcome.ofVoid(() -> system.nativeExecuteProcess(request, 0));
            assertEquals("com.corvane.wizard.service.ServiceException: -110200", outcome.toString());
        }
        List<String> closed = new ArrayList<>();
        PipedOutputStream refusing = new PipedOutputStream() {
            @Override
            public void flush() {
                throw new IllegalArgumentException("not to be seen");
            }

            @Override
            public void close() {
                closed.add("closed");
                flush();
            }
        };
        ProcessRequest request = new ProcessRequest(CHILD, "") {
            @Override
            public String getWorkgroup() {
                throw new IllegalStateException("mine");
            }
        };
        request.setStdOutput(refusing);
        request.setStdError(refusing);
        Outcome outcome = Outcome.ofVoid(() -> system.nativeExecuteProcess(request, 0));
        assertEquals("java.lang.IllegalStateException: mine", outcome.toString());
        assertEquals(List.of("closed", "closed"), closed);
    }
}
