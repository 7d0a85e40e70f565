package com.corvane.testing;

import java.util.Arrays;

/** The Windows that the library believes to run on. */
public enum Windows {
    W95(1, 4, 0, false),
    W98(1, 4, 10, true),
    ME(1, 4, 90, true),
    NT4(2, 4, 0, false),
    W2000(2, 5, 0, true),
    XP(2, 5, 1, true),
    VISTA(2, 6, 0, true),
    W10(2, 10, 0, true),
    /** One that does not tell what it is. */
    UNKNOWN(0, 0, 0, false);

    private static final int SHORT_RECORD = 148;
    private static final int LONG_RECORD = 156;
    private static final int WIDE_RECORD = 276;
    private static final int INSUFFICIENT_BUFFER = 122;

    private final int platform;
    private final int major;
    private final int minor;
    private final boolean knowsLongRecord;

    Windows(int platform, int major, int minor, boolean knowsLongRecord) {
        this.platform = platform;
        this.major = major;
        this.minor = minor;
        this.knowsLongRecord = knowsLongRecord;
    }

    /** Makes this the system, until the next reset of the hooks. */
    public void use() {
        for (int size : new int[] {SHORT_RECORD, LONG_RECORD, WIDE_RECORD}) {
            boolean knows = size == LONG_RECORD ? knowsLongRecord : this != UNKNOWN;
            byte[] record = Arrays.copyOf(Bytes.number(size, major, minor, 0, platform), knows ? size : 0);
            String call = "GetVersionEx" + (size == WIDE_RECORD ? "W\t" : "A\t") + size;
            Hooks.answer(call, knows ? 1 : 0, knows ? 0 : INSUFFICIENT_BUFFER, true);
            Hooks.writeTo(0, record, record.length);
        }
    }

    /** Whether the ANSI functions are called. */
    public boolean isAnsi() {
        return platform == 1;
    }

    /** The name of a function in the family of this system: with an A or a W at its end. */
    public String function(String name) {
        return name + (isAnsi() ? "A" : "W");
    }
}
