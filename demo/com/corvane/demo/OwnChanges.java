package com.corvane.demo;

import java.util.Collection;
import java.util.LinkedHashMap;
import java.util.Map;
import java.util.regex.Pattern;

/** What changes without the installation: the lines that a {@link Snapshot} leaves out, and why. */
final class OwnChanges {
    private static final Map<Pattern, String> REASONS = new LinkedHashMap<>();

    private static final Pattern PRODUCT = Pattern.compile("corvane|harbour", Pattern.CASE_INSENSITIVE);

    static {
        leaveOut("\\[HKEY_LOCAL_MACHINE\\\\System\\\\.*\\\\Control\\\\Video\\\\\\{.*",
                "the display adapter, which Windows enters under a new name at each start");
        leaveOut("\\[HKEY_LOCAL_MACHINE\\\\Hardware\\\\.*\"~MHz\"=.*",
                "the speed of the processors, which Windows measures at each start");
        leaveOut("\\[HKEY_LOCAL_MACHINE\\\\.*\"DriverDateData\"=.*",
                "the date of its driver, which is that of the start");
        leaveOut("\\[HKEY_LOCAL_MACHINE\\\\System\\\\.*\\\\Control\\\\ServiceCurrent\\].*",
                "the count of the services that Windows has started since its own start");
        leaveOut("\\[HKEY_CURRENT_USER\\\\Console[\\]\\\\].*",
                "the looks of console windows, written when a program opens the first one");
        leaveOut(".*\\\\wininit\\.(ini|bak) .*",
                "the list that the start of older Windows carried out");
        leaveOut(".*\\\\hsperfdata_[^\\\\]*", "the empty folder of a JVM's counters");
        leaveOut(".*\\\\corvane_win32-\\d+(\\\\corvane_win32-\\d+\\.dll .*)?",
                "the library's unpacked copies, in use as long as it runs, removed when it next runs; and the "
                        + "cleaner's empty folder, removed when it next runs an hour later or after");
        if (!Host.isWine()) {
            leaveOut("\\[HKEY_LOCAL_MACHINE\\\\System\\\\.*\\\\Services\\\\[bd]am\\\\.*",
                    "the programs that ran, which Windows notes by their paths");
            REASONS.put(Pattern.compile("(?!)"), "whatever does not name the product");
        }
    }

    private OwnChanges() {}

    private static void leaveOut(String lines, String reason) {
        REASONS.put(Pattern.compile(lines, Pattern.CASE_INSENSITIVE), reason);
    }

    static boolean contain(String line) {
        return REASONS.keySet().stream().anyMatch(lines -> lines.matcher(line).matches());
    }

    /** Where people work, other programs write all the time: there, a change counts that names the product. */
    static boolean areSeenIn(String line) {
        return Host.isWine() || PRODUCT.matcher(line).find();
    }

    static Collection<String> reasons() {
        return REASONS.values();
    }
}
