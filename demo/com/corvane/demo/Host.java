package com.corvane.demo;

/** The system that the demonstration runs on. */
final class Host {
    /** The version of the Wine that plays Windows; who starts the JVM there sets it. */
    private static final String WINE = System.getProperty("corvane.demo.wine");

    private Host() {}

    static boolean isWine() {
        return WINE != null;
    }

    static String name() {
        return System.getProperty("os.name") + (WINE == null ? "" : " under Wine " + WINE);
    }
}
