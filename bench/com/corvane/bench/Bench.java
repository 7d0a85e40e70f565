package com.corvane.bench;

import com.corvane.wizard.platform.win32.Win32Library;
import java.util.List;

/** This library beside the bare Win32 calls and its peers in Java, all in one JVM and one run. */
public final class Bench {
    private static final int ROUNDS = 201;

    private Bench() {}

    /** The only argument, if there is one, is the count of rounds. */
    public static void main(String[] arguments) throws Exception {
        Win32Library.load();
        NativeLibrary.load();
        int rounds = arguments.length > 0 ? Integer.parseInt(arguments[0]) : ROUNDS;
        Report report = new Report(System.out, new Rounds(rounds));
        report.opening(rounds);
        try (RowGroup registry = new RegistryRows()) {
            List<Row> rows = registry.rows();
            report.comparison("Registry", "java.util.prefs", rows, Row.JNA);
            report.ownCost("Registry", rows);
        }
        try (RowGroup files = new FileRows()) {
            report.comparison("Files", "java.nio.file", files.rows(), Row.JDK);
        }
        try (RowGroup installation = new InstallationRows()) {
            report.comparison("Installation", "JDK", installation.rows(), Row.JNA);
        }
        try (RowGroup programs = new ProgramRows()) {
            report.comparison("Programs and variables", "JDK", programs.rows(), Row.JNA);
            report.alone("one \"write\" a byte of 1 MB, from Java", ProgramRows.loopAlone());
        }
        try (ServiceRows services = new ServiceRows()) {
            report.comparison("Services, versions and rights", "JDK", services.rows(), Row.JNA);
            report.tells(services.note());
        }
        report.close();
    }
}
