package com.corvane.check;

import java.io.BufferedReader;
import java.io.IOException;
import java.io.PrintWriter;
import java.nio.charset.StandardCharsets;
import java.nio.file.FileSystems;
import java.nio.file.Files;
import java.nio.file.Path;
import java.nio.file.attribute.UserPrincipalNotFoundException;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;
import java.util.Locale;

/**
 * Runs the tests and the demonstration on the Windows that it is started on, each in a JVM of its own, and counts.
 * {@code check.cmd} starts it, by {@link Start}, in the folder of the archive: with {@code before} and, when Windows
 * was restarted, {@code after} for what takes a restart, and without either for all else. Exits with 0 when nothing
 * failed, 1 when something did, 2 when nothing was tried.
 */
public final class Check {

    private static final String CODE_PAGE = System.getProperty("sun.jnu.encoding");
    private static final String WESTERN = "Cp1252";
    private static final String JAPANESE = "MS932";
    static final Path WIN_INIT = Path.of(System.getenv("SystemRoot"), "WinInit.Ini");
    private static final Path LOG = Path.of("check.log").toAbsolutePath();

    /** What "check.cmd after" is to do, as the work folder keeps it. */
    private static final String TESTS = "tests";
    private static final String ALL = "tests and demonstration";
    private static final String LAST_PART = "the last part of the demonstration";

    private final WorkFolder work = new WorkFolder();
    private final PrintWriter log;
    private int passed;
    private int failed;
    private int skipped;

    private Check(PrintWriter log) {
        this.log = log;
    }

    public static void main(String[] arguments) throws Exception {
        List<String> words = new ArrayList<>(Arrays.asList(arguments));
        boolean agreed = words.removeIf("/y"::equalsIgnoreCase);
        String half = String.join(" ", words).toLowerCase(Locale.ROOT);
        try (PrintWriter log = new PrintWriter(LOG.toFile(), StandardCharsets.UTF_8)) {
            Check check = new Check(log);
            String obstacle = check.obstacle(half);
            if (!obstacle.isEmpty() || !agreed && !check.isAllowed()) {
                check.say(obstacle + "\nNothing was tried.");
                System.exit(2);
            }
            check.play(half);
            System.exit(check.failed == 0 ? 0 : 1);
        }
    }

    /** Why it cannot be tried here, or not now; empty when it can. */
    private String obstacle(String half) throws IOException {
        boolean isAfter = half.equals("after");
        if (!List.of("", "before", "after").contains(half)) {
            return "check.cmd [before | after] [/y]";
        } else if (!System.getProperty("os.arch").equals("amd64")) {
            return "It takes a JVM for x86-64; not " + System.getProperty("java.home");
        } else if (!isEnglish()) {
            return "The tests know accounts, services and messages by their English names; this Windows has others.";
        } else if (!List.of(WESTERN, JAPANESE).contains(CODE_PAGE)) {
            return "The tests are for the code pages 1252 (Western) and 932 (Japanese); here it is " + CODE_PAGE;
        } else if (isAfter && !work.exists()) {
            return "First: check.cmd before";
        } else if (isAfter && !work.isOurs()) {
            return work + " was made by somebody else, by you with other rights, or not to its end:\n"
                    + "start this again with those rights, or look into it and delete it.";
        } else if (!half.isEmpty() && work.isWaitingForStart()) {
            return "First restart Windows: work of an earlier run waits for it. (Shut down and started is not enough.)";
        } else if (!isAfter && work.exists()) {
            return work + " is there: a run was broken off, or waits for a restart. To go on, or to take back\n"
                    + "what it has left: check.cmd after";
        } else if (!isAfter && Files.exists(WIN_INIT)) {
            return WIN_INIT + " is there, which the tests would delete. (No Windows of today reads it.)";
        }
        return "";
    }

    /** A user may have another language than the system. */
    private static boolean isEnglish() throws IOException {
        try {
            FileSystems.getDefault().getUserPrincipalLookupService().lookupPrincipalByGroupName("Administrators");
            return Locale.getDefault(Locale.Category.DISPLAY).getLanguage().equals("en");
        } catch (UserPrincipalNotFoundException e) {
            return false;
        }
    }

    private boolean isAllowed() throws IOException {
        say(Files.readString(Path.of("touches.txt")));
        System.out.print("Enter: go on. Ctrl+C: leave all as it is. ");
        return System.in.read() >= 0;
    }

    private void play(String half) throws Exception {
        say("Java " + System.getProperty("java.version") + ", " + System.getProperty("os.name") + ' '
                + System.getProperty("os.version") + ", " + CODE_PAGE);
        switch (half) {
            case "after" -> after();
            case "before" -> before();
            default -> {
                work.make();
                test(CODE_PAGE.equals(JAPANESE) ? "cp932 | any-code-page" : "!cp932", "");
                demonstrate("");
                demonstrate("--undo");
                skip("The demonstration after a restart", "check.cmd before");
                work.awaits("");
            }
        }
        close();
    }

    /** The demonstration compares all with what it finds now: it comes before what the tests leave to the restart. */
    private void before() throws Exception {
        work.make();
        boolean stays = demonstrate("");
        if (!stays) {
            demonstrate("--undo");
        }
        test("restart", "before");
        work.awaits(stays ? ALL : TESTS);
    }

    /** Without what it was to do, an earlier run was broken off. */
    private void after() throws Exception {
        String awaited = work.awaited();
        if (awaited.equals(ALL) || awaited.equals(TESTS)) {
            test("restart", "after");
        }
        boolean stays = awaited.equals(ALL) && demonstrate("--after-reboot");
        boolean isDone = awaited.equals(LAST_PART) && demonstrate("--after-second-reboot");
        if (!stays && !isDone && !awaited.equals(TESTS)) {
            demonstrate("--undo");
        }
        work.awaits(stays ? LAST_PART : "");
    }

    private void close() throws Exception {
        if (work.awaited().isEmpty()) {
            takeBack();
            work.delete();
            say(work.exists() ? "\nDelete it yourself, something in it is in use: " + work : "");
        } else {
            say("\nRestart Windows now (restart, not shut down). Then, as the same user: check.cmd after\n");
        }
        say("All that was said: " + LOG + "\n");
        say(passed + " passed, " + failed + " failed, " + skipped + " skipped");
    }

    private void takeBack() throws Exception {
        List<String> command = work.java(WorkFolder.TEST, "-cp", work.classPath(), "com.corvane.check.Leftovers");
        if (run(command, WorkFolder.TEST, new TestOutput()) != 0) {
            ++failed;
            say("FAILED: not all could be taken back; touches.txt says what there may be");
        }
    }

    private void say(String text) {
        System.out.println(text);
        log.println(text);
        log.flush();
    }

    private void skip(String what, String why) {
        ++skipped;
        say("SKIPPED " + what + "\n    " + why);
    }

    private void test(String tags, String half) throws Exception {
        say("\nThe tests, which take some minutes");
        List<String> command = work.java(WorkFolder.TEST, "-Xcheck:jni", "-Dcorvane.test.half=" + half);
        command.addAll(work.testProperties());
        command.addAll(List.of("-cp", work.classPath(), "com.corvane.check.TestRun", tags));
        TestOutput output = new TestOutput();
        int code = run(command, WorkFolder.TEST, output);
        run(List.of("reg", "delete", "HKCU\\Software\\Corvane", "/f"), WorkFolder.TEST, new TestOutput());
        passed += output.counts[0];
        failed += output.counts[1] + output.warnings;
        skipped += output.counts[2];
        if (code != 0 || output.counts[0] + output.counts[2] == 0) {
            ++failed;
            say("FAILED: the JVM of the tests ended with " + code + " before their end");
        }
    }

    /** Counts as one test. */
    private boolean demonstrate(String part) throws Exception {
        if (!WorkFolder.isAdministrator()) {
            skip("The demonstration " + part, "takes the rights of an administrator");
            return false;
        }
        say("\nThe demonstration " + part);
        List<String> command = work.java(WorkFolder.DEMO, "-cp", "corvane-win32.jar;corvane-demo.jar");
        command.addAll(WorkFolder.IS_WINE ? List.of("-Dcorvane.demo.wine=") : List.of());
        command.add("com.corvane.demo.Demo");
        command.addAll(part.isEmpty() ? List.of() : List.of(part));
        boolean isGood = run(command, WorkFolder.DEMO, new TestOutput()) == 0;
        passed += isGood ? 1 : 0;
        failed += isGood ? 0 : 1;
        say((isGood ? "PASSED" : "FAILED") + " the demonstration " + part);
        return isGood;
    }

    private int run(List<String> command, String temporary, TestOutput output) throws Exception {
        Process process = work.process(command, temporary).redirectErrorStream(true).start();
        process.getOutputStream().close();
        try (BufferedReader lines = process.inputReader(StandardCharsets.UTF_8)) {
            for (String line = lines.readLine(); line != null; line = lines.readLine()) {
                if (output.isForPeople(line)) {
                    say(line);
                } else {
                    log.println(line);
                }
            }
        }
        return process.waitFor();
    }

    /** What the JVM of the tests says besides: its complaints of a wrong use of JNI by the library, and the counts. */
    private static final class TestOutput {

        private final int[] counts = new int[3];
        private int warnings;
        private boolean isWarning;
        private boolean isTrace;

        boolean isForPeople(String line) {
            int end = line.indexOf(TestRun.END);
            if (end >= 0) {
                String[] numbers = line.substring(end + TestRun.END.length()).split(" ");
                Arrays.setAll(counts, at -> Integer.parseInt(numbers[at]));
                return false;
            }
            boolean isWrong = line.startsWith("FATAL ERROR in native method")
                    || isWarning && line.matches("\\s+at com\\.corvane.*");
            warnings += isWrong ? 1 : 0;
            isWarning = line.startsWith("WARNING");
            // The JVM complains of its own natives, too, each time with a whole stack.
            isTrace = isWarning || isTrace && line.matches("\\s+(at|- locked) .*");
            return isWrong || !isTrace;
        }
    }
}
