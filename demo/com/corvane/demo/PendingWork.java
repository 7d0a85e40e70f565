package com.corvane.demo;

/** What Windows is to do with files at its next start, as its own tool shows it. */
final class PendingWork {
    private static final String[] QUERY = {
        "reg", "query", "HKLM\\SYSTEM\\CurrentControlSet\\Control\\Session Manager",
        "/v", "PendingFileRenameOperations"
    };

    private PendingWork() {}

    /** What it runs once, after that. */
    static String showCommands(Stage stage) {
        return stage.run("reg", "query",
                "HKLM\\Software\\Microsoft\\Windows\\CurrentVersion\\RunOnce");
    }

    static String show(Stage stage) {
        return stage.run(QUERY);
    }

    /** Where people work, something of other programs may. */
    static void showNone(Stage stage) {
        if (Host.isWine()) {
            stage.run(1, QUERY);
        } else {
            SystemTool tool = new SystemTool(QUERY);
            stage.gives("something of the product waits", false,
                    () -> tool.run() == 0 && tool.output().contains(Product.ROOT.toString()));
        }
    }
}
