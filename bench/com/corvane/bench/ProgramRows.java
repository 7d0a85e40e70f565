package com.corvane.bench;

import com.corvane.wizard.platform.win32.ProcessRequest;
import com.corvane.wizard.platform.win32.Win32SystemUtilServiceImpl;
import com.corvane.wizard.platform.win32.environment.WindowsEnvironment;
import com.corvane.wizard.service.ServiceException;
import java.io.IOException;
import java.io.InputStream;
import java.io.PipedInputStream;
import java.io.PipedOutputStream;
import java.nio.file.Path;
import java.util.List;

/**
 * Programs that are run, their output in a stream that another thread reads, and the variables of
 * the process. The JDK cannot set one.
 */
final class ProgramRows implements RowGroup {
    private static final String NAME = "CORVANE_BENCH";
    private static final String VALUE = "C:\\Program Files\\Example";
    private static final int MEGABYTE = 1_000_000;
    private static final int PIPE_SIZE = 65_536;

    private final Win32SystemUtilServiceImpl system = new Win32SystemUtilServiceImpl();
    private final WindowsEnvironment environment = new WindowsEnvironment();
    private final String child = Path.of("corvane_bench_child.exe").toAbsolutePath().toString();

    @Override
    public List<Row> rows() {
        RequiredPrograms.setVariable(NAME, VALUE);
        return List.of(running("run a program", 0), running("1 MB of its output", MEGABYTE),
                reading(), setting());
    }

    private Row running(String name, int bytes) {
        String commandLine = '"' + child + "\" " + bytes;
        return new Row(name, 1,
                Timed.of(() -> read((output, errors) -> runByLibrary(bytes, output, errors), bytes)),
                Timed.of(() -> read((output, errors) -> RequiredPrograms.run(commandLine, output, errors), bytes)),
                calls -> BarePrograms.run(commandLine, calls),
                Timed.of(() -> read((output, errors) -> JnaPrograms.run(commandLine, output), bytes)),
                Timed.of(() -> readAll(new ProcessBuilder(child, Integer.toString(bytes)).start().getInputStream(),
                        bytes)));
    }

    /** What bounds the row with 1 MB: that many calls of "write", from Java, into a stream that is read meanwhile. */
    static Timed loopAlone() {
        return Timed.of(() -> read((output, errors) -> {
            for (int i = 0; i < MEGABYTE; i++) {
                output.write('x');
            }
            output.close();
        }, MEGABYTE));
    }

    private void runByLibrary(int bytes, PipedOutputStream output, PipedOutputStream errors)
            throws ServiceException {
        ProcessRequest request = new ProcessRequest(child, Integer.toString(bytes));
        request.setStdOutput(output);
        request.setStdError(errors);
        system.nativeExecuteProcess(request, ProcessRequest.WINDOW_HIDDEN);
        check(request.getProcessReturnCode(), 0);
    }

    private Row reading() {
        return new Row("read a variable", 1,
                Timed.of(() -> environment.getProcessEnvironmentVariable(NAME)),
                Timed.of(() -> RequiredPrograms.readVariable(NAME)),
                calls -> BarePrograms.readVariable(NAME, calls),
                Timed.of(() -> JnaPrograms.readVariable(NAME)),
                Timed.of(() -> System.getenv("PATH")));
    }

    private Row setting() {
        return new Row("set a variable", 1,
                Timed.of(() -> environment.setProcessEnvironmentVariable(NAME, VALUE)),
                Timed.of(() -> RequiredPrograms.setVariable(NAME, VALUE)),
                calls -> BarePrograms.setVariable(NAME, VALUE, calls),
                Timed.of(() -> JnaPrograms.setVariable(NAME, VALUE)),
                null);
    }

    /** Runs the work with streams that a thread of its own reads; all that is written must come. */
    private static void read(Work work, int bytes) throws Exception {
        PipedOutputStream output = new PipedOutputStream();
        PipedOutputStream errors = new PipedOutputStream();
        PipedInputStream reading = new PipedInputStream(output, PIPE_SIZE);
        new PipedInputStream(errors);
        int[] count = new int[1];
        Thread reader = new Thread(() -> count[0] = count(reading));
        reader.start();
        work.run(output, errors);
        reader.join();
        check(count[0], bytes);
    }

    private static void readAll(InputStream stream, int bytes) {
        check(count(stream), bytes);
    }

    private static void check(int count, int bytes) {
        if (count != bytes) {
            throw new IllegalStateException(count + " bytes came, not " + bytes);
        }
    }

    private static int count(InputStream stream) {
        byte[] part = new byte[PIPE_SIZE];
        int count = 0;
        try {
            for (int read = stream.read(part); read >= 0; read = stream.read(part)) {
                count += read;
            }
        } catch (IOException failure) {
            throw new IllegalStateException(failure);
        }
        return count;
    }

    @Override
    public void close() {}

    @FunctionalInterface
    private interface Work {
        void run(PipedOutputStream output, PipedOutputStream errors) throws Exception;
    }
}
