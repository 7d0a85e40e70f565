package com.corvane.wizard.platform.win32;

import static org.junit.jupiter.api.Assertions.assertArrayEquals;
import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertTrue;

import com.corvane.testing.Outcome;
import com.corvane.wizard.service.ServiceException;
import java.io.BufferedOutputStream;
import java.io.ByteArrayOutputStream;
import java.io.IOException;
import java.io.OutputStream;
import java.io.PipedInputStream;
import java.io.PipedOutputStream;
import java.io.PrintStream;
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

    private final ByteArrayOutputStream output = new StaysOpen();
    private final ByteArrayOutputStream errors = new StaysOpen();

    /** Nobody but its owner closes it. */
    private static final class StaysOpen extends ByteArrayOutputStream {
        @Override
        public void close() {
            reset();
        }
    }

    /** Gives the exit code. */
    private static int run(String command, String arguments, int window, OutputStream output, OutputStream errors)
            throws ServiceException {
        ProcessRequest request = new ProcessRequest(command, arguments);
        request.setStdOutput(output);
        request.setStdError(errors);
        Win32SystemUtilServiceImpl system = new Win32SystemUtilServiceImpl();
        try {
            system.nativeExecuteProcess(request, window);
        } catch (ServiceException failure) {
            if (failure.getReason() != INTERNAL_ERROR) {
                throw failure;
            }
            system.nativeExecuteProcess(request, window);
        }
        return request.getProcessReturnCode();
    }

    private static byte[] pattern(int length) {
        byte[] bytes = new byte[length];
        for (int index = 0; index < length; ++index) {
            bytes[index] = (byte) index;
        }
        return bytes;
    }

    /** What it wrote on both, and how it ended. The last has a child of its own, which keeps the pipes. */
    @ParameterizedTest
    @CsvSource({"'', 0, 0, 0", "out=1 exit=1, 1, 0, 1", "out=999 err=1000 exit=4294967295, 999, 1000, -1",
        "out=1000 err=1001 exit=2147483648, 1000, 1001, -2147483648",
        "sleep=300 out=1001 err=999 sleep=300, 1001, 999, 0", "both=300000, 300000, 300000, 0",
        "err=1700000 out=500000 exit=5, 500000, 1700000, 5", "out=7 close sleep=500 exit=3, 7, 0, 3",
        "child=sleep=8000 out=5, 5, 0, 0"})
    void everyByteArrivesAndTheExitCode(String arguments, int out, int err, int exit) throws Exception {
        long begin = System.nanoTime();
        assertEquals(exit, run(CHILD, arguments, ProcessRequest.WINDOW_HIDDEN, new BufferedOutputStream(output),
                new BufferedOutputStream(errors)));
        assertArrayEquals(pattern(out), output.toByteArray());
        assertArrayEquals(pattern(err), errors.toByteArray());
        assertTrue(!arguments.startsWith("child") || System.nanoTime() - begin < TimeUnit.SECONDS.toNanos(7));
    }

    @Test
    void theCommandLineAndTheWindow() throws Exception {
        String longest = "line " + "x".repeat(32_766 - CHILD.length() - 8);
        for (String arguments : List.of("line", "line  \"a b\" '' \\\" %PATH% \u00e9 ", longest)) {
            output.reset();
            run(CHILD, arguments, 0, output, errors);
            assertEquals('"' + CHILD + "\" " + arguments, output.toString(System.getProperty("sun.jnu.encoding")));
        }
        output.reset();
        run('"' + CHILD + '"', "window", ProcessRequest.WINDOW_HIDDEN, output, errors);
        run(CHILD, "window", ProcessRequest.WINDOW_MINIMIZED, output, errors);
        assertEquals("02", output.toString());
        PrintStream console = System.out;
        System.setOut(new PrintStream(errors));
        ProcessRequest silent = new ProcessRequest(CHILD, "out=5 err=5 exit=6");
        silent.getStdErrorStream().write(new byte[] {7}, 0, 1);
        silent.setStdError(errors);
        silent.getStdErrorStream().write(new byte[] {7, 8, 9}, 1, 2);
        silent.setStdError(null);
        new Win32SystemUtilServiceImpl().nativeExecuteProcess(silent, 0);
        System.setOut(console);
        assertEquals(6, silent.getProcessReturnCode());
        assertArrayEquals(new byte[] {8, 9}, errors.toByteArray(), "and nothing on the console");
    }

    @Test
    void outputIsThereWhileTheProgramRunsAndItsReaderSeesTheEnd() throws Exception {
        PipedInputStream reader = new PipedInputStream();
        PipedOutputStream pipe = new PipedOutputStream(reader);
        CompletableFuture<Throwable> call = CompletableFuture.supplyAsync(() ->
                Outcome.thrownBy(() -> assertEquals(0, run(CHILD, "out=5 sleep=3000 out=1", 0, pipe, errors))));
        assertArrayEquals(pattern(5), reader.readNBytes(5));
        assertTrue(!call.isDone());
        assertArrayEquals(pattern(1), reader.readAllBytes());
        assertEquals(null, call.get());
    }

    /** Nobody reads on, and it refuses whatever else is done with it. */
    private static PipedOutputStream refusing(List<String> closed) throws IOException {
        try (PipedInputStream reader = new PipedInputStream()) {
            return new PipedOutputStream(reader) {
                @Override
                public void flush() {
                    closed.add("flushed");
                    throw new IllegalStateException("not to be seen");
                }

                @Override
                public void close() {
                    closed.add("closed");
                    throw new IllegalStateException("not to be seen");
                }
            };
        }
    }

    /** What writing throws is what Java sees. Both are closed, and the program does not hang on its pipe. */
    @Test
    void aReaderThatDoesNotReadOn(@TempDir Path folder) throws Exception {
        Path program = Files.copy(Path.of(CHILD), folder.resolve("child.exe"));
        List<String> closed = new ArrayList<>();
        Throwable thrown = Outcome.thrownBy(() ->
                run(program.toString(), "both=10000000", 0, refusing(closed), refusing(closed)));
        assertEquals("java.io.IOException: Pipe closed", thrown.toString());
        assertEquals(List.of("flushed", "closed", "flushed", "closed"), closed);
        AfterwardsTest.await(() -> program.toFile().delete()); // not as long as it runs
    }
}
