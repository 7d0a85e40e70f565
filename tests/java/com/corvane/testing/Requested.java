package com.corvane.testing;

import com.corvane.wizard.platform.win32.ProcessRequest;
import com.corvane.wizard.platform.win32.Win32SystemUtilServiceImpl;
import java.io.ByteArrayOutputStream;
import java.io.PipedOutputStream;
import java.nio.charset.StandardCharsets;
import java.util.List;

/** A program that a scene has run: [command, arguments, user, password, workgroup]; and all that it is told. */
final class Requested extends ProcessRequest {

    private final StringBuilder told = new StringBuilder();

    Requested(List<String> items) {
        super(item(items, 0), item(items, 1));
        setCredentials(item(items, 2), item(items, 3), item(items, 4));
        setStdOutput(new Kept("out"));
        setStdError(new Kept("errors"));
    }

    private static String item(List<String> items, int index) {
        return index < items.size() ? items.get(index) : null;
    }

    @Override
    public void setProcessReturnCode(int code) {
        told.append(", exit ").append(code);
    }

    /** One that shows the number of each warning and its reason. */
    Win32SystemUtilServiceImpl service() {
        return new Win32SystemUtilServiceImpl() {
            @Override
            public void LogWarning(String text) {
                told.append(text.replaceAll("(?s)(-\\d+): .*\\((\\d+)\\)", ", warned $1 $2"));
            }
        };
    }

    /** What it was told since this was last asked, as a scene writes it after the outcome. */
    String told() {
        String all = told.toString();
        told.setLength(0);
        return all;
    }

    /** What was written shows when it is flushed; a scene that says nothing of a stream says that it was closed. */
    private final class Kept extends PipedOutputStream {
        private final String name;
        private final ByteArrayOutputStream bytes = new ByteArrayOutputStream();
        private boolean flushed;

        Kept(String name) {
            this.name = name;
        }

        @Override
        public void write(int b) {
            bytes.write(b);
        }

        @Override
        public void flush() {
            flushed = true;
        }

        @Override
        public void close() {
            String text = bytes.toString(StandardCharsets.ISO_8859_1);
            told.append(text.isEmpty() ? "" : ", " + name + " " + text).append(flushed ? "" : ", not flushed");
            bytes.reset();
        }
    }
}
