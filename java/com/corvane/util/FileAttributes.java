package com.corvane.util;

/**
 * The permissions and attributes of a file, independent of the operating system: a set of states, each
 * addressed by one of the constants below. In a new object every state is false.
 *
 * <p>The native library reads the constants and calls the constructor, {@link #getAttributeState} and
 * {@link #setAttributeState} by name and signature. On Windows, writeable is the absence of the
 * read-only attribute, for owner, group and world alike; readable is always true, executable true for
 * directories, and both are ignored when attributes are set.
 */
public class FileAttributes {

    /** The owner may read the file. */
    public static final int OWNER_READABLE = 1;

    /** The owner may write the file. */
    public static final int OWNER_WRITEABLE = 1 << 1;

    /** The owner may execute the file. */
    public static final int OWNER_EXECUTABLE = 1 << 2;

    /** The owner's group may read the file. */
    public static final int GROUP_READABLE = 1 << 3;

    /** The owner's group may write the file. */
    public static final int GROUP_WRITEABLE = 1 << 4;

    /** The owner's group may execute the file. */
    public static final int GROUP_EXECUTABLE = 1 << 5;

    /** Everybody may read the file. */
    public static final int WORLD_READABLE = 1 << 6;

    /** Everybody may write the file. */
    public static final int WORLD_WRITEABLE = 1 << 7;

    /** Everybody may execute the file. */
    public static final int WORLD_EXECUTABLE = 1 << 8;

    /** The file is hidden. */
    public static final int HIDDEN = 1 << 9;

    /** The file has changed since it was last archived. */
    public static final int ARCHIVE = 1 << 10;

    /** The file belongs to the operating system. */
    public static final int SYSTEM = 1 << 11;

    private int states;

    /** Makes an object whose states are all false. */
    public FileAttributes() {}

    /**
     * Tells one state.
     *
     * @param attribute one of the constants
     * @return whether it is set
     */
    public boolean getAttributeState(int attribute) {
        return (states & attribute) != 0;
    }

    /**
     * Sets or clears one state.
     *
     * @param attribute one of the constants
     * @param state whether it is to be set
     */
    public void setAttributeState(int attribute, boolean state) {
        states = state ? states | attribute : states & ~attribute;
    }
}
