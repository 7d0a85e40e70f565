package com.corvane.wizard.platform.win32.win32service;

/**
 * One thing that Windows does when a service fails.
 *
 * <p>The native library calls the constructor and the getters by name and signature.
 */
public class Win2kSCAction {

    /** Nothing. */
    public static final int SC_ACTION_NONE = 0;

    /** The service is started again. */
    public static final int SC_ACTION_RESTART = 1;

    /** Windows is started anew. */
    public static final int SC_ACTION_REBOOT = 2;

    /** A command is run. */
    public static final int SC_ACTION_RUN_COMMAND = 3;

    private final int actionType;
    private final int delay;

    /**
     * Makes an action.
     *
     * @param actionType one of the constants; any other number is written as {@link #SC_ACTION_NONE}
     * @param delay milliseconds until it is done
     */
    public Win2kSCAction(int actionType, int delay) {
        this.actionType = actionType;
        this.delay = delay;
    }

    /**
     * Tells what is done.
     *
     * @return one of the constants, or what else Windows told
     */
    public int getActionType() {
        return actionType;
    }

    /**
     * Tells when it is done.
     *
     * @return milliseconds after the failure
     */
    public int getDelay() {
        return delay;
    }

    @Override
    public String toString() {
        return "Win2kSCAction[actionType=" + actionType + ", delay=" + delay + "]";
    }
}
