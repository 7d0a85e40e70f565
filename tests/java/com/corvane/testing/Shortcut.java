package com.corvane.testing;

/** A shortcut as the shell itself understands it. */
public final class Shortcut {

    private Shortcut() {}

    /** Its target, arguments, working directory and icon. */
    public static native String[] read(String path);
}
