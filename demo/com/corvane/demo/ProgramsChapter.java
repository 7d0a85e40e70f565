package com.corvane.demo;

import com.corvane.wizard.platform.win32.ProcessRequest;
import com.corvane.wizard.platform.win32.Win32SystemUtilServiceImpl;
import java.io.ByteArrayOutputStream;
import java.io.OutputStream;

/** Runs the system's own programs, whose output comes line by line while they run. */
final class ProgramsChapter implements Chapter {
    private static final int NOT_STARTED = -110203;
    private static final int FILE_NOT_FOUND = 2;

    private final Win32SystemUtilServiceImpl system = new Win32SystemUtilServiceImpl();

    @Override
    public String name() {
        return "Programs: their output in Java's streams, and how they ended";
    }

    @Override
    public void run(Stage stage) {
        String interpreter = System.getenv("ComSpec");
        stage.scene("A program that takes its time; each line is shown with the moment at which it came");
        ProcessRequest request = new ProcessRequest(interpreter,
                "/c echo begun& ping -n 3 127.0.0.1 >nul& echo half done& ping -n 3 127.0.0.1 >nul"
                        + "& echo a word of warning>&2& exit 3");
        long start = System.nanoTime();
        request.setStdOutput(new Lines(stage, "output", start));
        request.setStdError(new Lines(stage, "error ", start));
        stage.gives("run it; its exit code", 3, () -> {
            system.nativeExecuteProcess(request, ProcessRequest.WINDOW_HIDDEN);
            return request.getProcessReturnCode();
        });
        stage.scene("A program that there is not");
        stage.refuses("run it", NOT_STARTED, FILE_NOT_FOUND, () -> system.nativeExecuteProcess(
                new ProcessRequest("C:\\no such program.exe", ""), ProcessRequest.WINDOW_NORMAL));
    }

    /** Shows each line when it is whole. */
    private static final class Lines extends OutputStream {
        private final Stage stage;
        private final String name;
        private final long start;
        private final ByteArrayOutputStream line = new ByteArrayOutputStream();

        Lines(Stage stage, String name, long start) {
            this.stage = stage;
            this.name = name;
            this.start = start;
        }

        @Override
        public void write(int value) {
            if (value == '\n') {
                stage.tells(String.format("%4d ms  %s  %s", (System.nanoTime() - start) / 1_000_000,
                        name, line.toString().trim()));
                line.reset();
            } else {
                line.write(value);
            }
        }
    }
}
