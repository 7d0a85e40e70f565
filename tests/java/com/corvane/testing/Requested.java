package com.corvane.testing;

import com.corvane.wizard.platform.win32.ProcessRequest;
import com.corvane.wizard.platform.win32.Win32SystemUtilServiceImpl;
import java.io.PipedOutputStream;
import java.util.Arrays;
import java.util.List;

/** A program that a scene has run: [command, arguments, user, password, workgroup]; and what it is told. */
final class Requested extends ProcessRequest {

    private final StringBuilder told = new StringBuilder();

    Requested(List<String> items) {
        super(items.get(0), items.size() < 2 ? null : items.get(1));
        String[] all = Arrays.copyOf(items.toArray(new String[0]), 5);
        setCredentials(all[2], all[3], all[4]);
        setStdOutput(kept("out "));
        setStdError(kept("errors "));
    }

    @Override
    public void setProcessReturnCode(int code) {
        told.append(", exit ").append(code);
    }

    Win32SystemUtilServiceImpl service() {
        return new Win32SystemUtilServiceImpl() {
            @Override
            public void LogWarning(String text) {
                told.append(text.replaceAll("(?s)(-\\d+): .*\\((\\d+)\\)", ", warned $1 $2"));
            }
        };
    }

    /** As a scene writes it after the outcome. */
    String told() {
        return told.toString();
    }

    /** What was written is told when it is closed. */
    private PipedOutputStream kept(String name) {
        StringBuilder text = new StringBuilder();
        return new PipedOutputStream() {
            @Override
            public void write(int b) {
                text.append(text.length() == 0 ? ", " + name : "").append((char) (b & 0xFF));
            }

            @Override
            public void close() {
                told.append(text);
                text.setLength(0);
            }
        };
    }
}
