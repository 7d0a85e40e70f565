package com.corvane.wizard.platform.win32;

import java.io.IOException;
import java.io.OutputStream;
import java.io.PipedOutputStream;

/**
 * A program to run, and what came of it; see {@link Win32SystemUtilServiceImpl#nativeExecuteProcess}.
 *
 * <pre>
 * ByteArrayOutputStream output = new ByteArrayOutputStream();
 * ProcessRequest request = new ProcessRequest("C:\\Program Files\\Example\\tool.exe", "-list");
 * request.setStdOutput(output);
 * system.nativeExecuteProcess(request, ProcessRequest.WINDOW_HIDDEN);
 * System.out.println(request.getProcessReturnCode() + ": " + output);
 * </pre>
 *
 * <p>The library knows the methods by their names: a class of another kind that has {@code getCommand},
 * {@code getArgumentString}, {@code getUsername}, {@code getPassword}, {@code getWorkgroup}, {@code
 * getStdOutputStream}, {@code getStdErrorStream} and {@code setProcessReturnCode} serves as well.
 */
public class ProcessRequest {

    /** The window of the program is not shown at first. */
    public static final int WINDOW_HIDDEN = 0;

    /** The window is shown as large as the program makes it. */
    public static final int WINDOW_NORMAL = 1;

    /** The window is shown as a button in the task bar. */
    public static final int WINDOW_MINIMIZED = 2;

    /** The window is shown as large as the screen. */
    public static final int WINDOW_MAXIMIZED = 3;

    private final String command;
    private final String argumentString;
    private String username;
    private String password;
    private String workgroup;
    private PipedOutputStream stdOutput = new Passing(null);
    private PipedOutputStream stdError = new Passing(null);
    private int processReturnCode;

    /**
     * Makes a request to run a program as the user of this process. What it writes goes nowhere.
     *
     * @param command the program's file, with its extension; blanks in it do no harm
     * @param argumentString what follows it on the command line, just as it is given. Both go through the ANSI
     *     code page on every Windows: a character that it lacks becomes a similar one or a ?; null or empty for
     *     nothing
     */
    public ProcessRequest(String command, String argumentString) {
        this.command = command;
        this.argumentString = argumentString;
    }

    /**
     * Asks for another user. That any of the three is neither null nor empty is enough for it.
     *
     * @param username the account
     * @param password its password
     * @param workgroup its domain, or "." for the machine itself
     */
    public void setCredentials(String username, String password, String workgroup) {
        this.username = username;
        this.password = password;
        this.workgroup = workgroup;
    }

    /**
     * Says where the program's output goes: its bytes, unchanged, while the program runs.
     *
     * @param output a PipedOutputStream, which is closed at the end; another thread must read the other
     *     end of it then. Or any other stream, which is flushed at the end and remains open
     */
    public void setStdOutput(OutputStream output) {
        stdOutput = piped(output);
    }

    /**
     * Says where goes what the program writes to its standard error. It follows the output as a whole.
     *
     * @param errors as for {@link #setStdOutput}
     */
    public void setStdError(OutputStream errors) {
        stdError = piped(errors);
    }

    private static PipedOutputStream piped(OutputStream target) {
        return target instanceof PipedOutputStream ? (PipedOutputStream) target : new Passing(target);
    }

    /**
     * The program.
     *
     * @return as it was given
     */
    public String getCommand() {
        return command;
    }

    /**
     * What follows the program on the command line.
     *
     * @return as it was given
     */
    public String getArgumentString() {
        return argumentString;
    }

    /**
     * The account of another user.
     *
     * @return null unless one was given
     */
    public String getUsername() {
        return username;
    }

    /**
     * The password of another user.
     *
     * @return null unless one was given
     */
    public String getPassword() {
        return password;
    }

    /**
     * The domain of another user.
     *
     * @return null unless one was given
     */
    public String getWorkgroup() {
        return workgroup;
    }

    /**
     * The stream that the library writes the output to.
     *
     * @return never null
     */
    public PipedOutputStream getStdOutputStream() {
        return stdOutput;
    }

    /**
     * The stream that the library writes to what comes from the standard error.
     *
     * @return never null
     */
    public PipedOutputStream getStdErrorStream() {
        return stdError;
    }

    /**
     * Takes the exit code; the library calls it when the program has ended.
     *
     * @param code the 32 bits that Windows has for it: from 0x80000000 on it is a negative number here
     */
    public void setProcessReturnCode(int code) {
        processReturnCode = code;
    }

    /**
     * The exit code.
     *
     * @return 0 as long as none was told
     */
    public int getProcessReturnCode() {
        return processReturnCode;
    }

    /** Passes everything on; without a target it goes nowhere. */
    private static final class Passing extends PipedOutputStream {

        private final OutputStream target;

        Passing(OutputStream target) {
            this.target = target;
        }

        @Override
        public void write(int b) throws IOException {
            if (target != null) {
                target.write(b);
            }
        }

        @Override
        public void write(byte[] bytes, int offset, int length) throws IOException {
            if (target != null) {
                target.write(bytes, offset, length);
            }
        }

        @Override
        public void flush() throws IOException {
            if (target != null) {
                target.flush();
            }
        }

        @Override
        public void close() throws IOException {
            flush();
        }
    }
}
