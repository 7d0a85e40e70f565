package com.corvane.check;

/** The beginning, which runs in Java 8, too, to say that all else here does not. */
public final class Start {

    private static final int FIRST_JAVA = 17;

    private Start() {}

    public static void main(String[] arguments) throws Exception {
        // 52 in Java 8, and one more in each that follows
        if (Double.parseDouble(System.getProperty("java.class.version")) < 44 + FIRST_JAVA) {
            System.out.println("It takes a JDK or JRE " + FIRST_JAVA + " or later: set JAVA_HOME to its folder. "
                    + System.getProperty("java.home") + " is " + System.getProperty("java.version") + ".\nNothing was tried.");
            System.exit(2);
        }
        Check.main(arguments);
    }
}
