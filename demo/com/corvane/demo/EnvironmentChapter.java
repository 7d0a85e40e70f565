package com.corvane.demo;

import com.corvane.wizard.platform.win32.environment.WindowsEnvironment;

/** An environment variable of the installer's own process, and one that is stored for the user. */
final class EnvironmentChapter implements Chapter {
    private static final String NAME = "CORVANE_DEMO";
    private static final String VALUE = "%SystemRoot%\\harbour";

    private final WindowsEnvironment variables = new WindowsEnvironment();

    @Override
    public String name() {
        return "Environment variables";
    }

    @Override
    public void run(Stage stage) throws Exception {
        stage.scene("Of the process");
        stage.does("set " + NAME, () -> variables.setProcessEnvironmentVariable(NAME, "notes"));
        stage.gives("its value", "notes", () -> variables.getProcessEnvironmentVariable(NAME));
        stage.does("remove it", () -> variables.setProcessEnvironmentVariable(NAME, null));
        stage.gives("its value", null, () -> variables.getProcessEnvironmentVariable(NAME));
        stage.scene("Of the user; every window is told");
        stage.does("store " + VALUE, () -> variables.winNTSetEnvironmentVariable(NAME, VALUE, false));
        stage.run("reg", "query", "HKCU\\Environment", "/v", NAME);
        stage.gives("its value, as it is stored", VALUE,
                () -> variables.winNTGetRawEnvironmentVariable(NAME, false));
        stage.does("remove it", () -> variables.winNTSetEnvironmentVariable(NAME, null, false));
        stage.run(1, "reg", "query", "HKCU\\Environment", "/v", NAME);
    }
}
