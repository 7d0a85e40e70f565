package com.corvane.wizard.platform.win32.win32service;

import java.util.ArrayList;
import java.util.List;

/**
 * What Windows does when the program of a service ends without having stopped: the first action at the first
 * failure, the second at the second, and the last one at all further ones.
 *
 * <p>The native library calls the constructor, the getters, the setters and {@link #addAction} by name and
 * signature.
 */
public class Win2kServiceFailureActions {

    /** A reset period: failures are never forgotten; so in a new object. */
    public static final int INFINITE = -1;

    private int resetPeriod = INFINITE;
    private String rebootMsg;
    private String command;
    private final List<Win2kSCAction> actions = new ArrayList<>();

    /** Makes an object without actions or texts, in which failures are never forgotten. */
    public Win2kServiceFailureActions() {}

    /**
     * Tells when the first action is the next again.
     *
     * @return seconds without a failure, or {@link #INFINITE}
     */
    public int getResetPeriod() {
        return resetPeriod;
    }

    /**
     * Sets when the first action is the next again.
     *
     * @param resetPeriod seconds without a failure, or {@link #INFINITE}
     */
    public void setResetPeriod(int resetPeriod) {
        this.resetPeriod = resetPeriod;
    }

    /**
     * Tells what users are told before Windows is started anew.
     *
     * @return the text; in a change, null leaves the one that there is and empty takes it away
     */
    public String getRebootMsg() {
        return rebootMsg;
    }

    /**
     * Sets what users are told before Windows is started anew.
     *
     * @param rebootMsg the text; in a change, null leaves the one that there is and empty takes it away
     */
    public void setRebootMsg(String rebootMsg) {
        this.rebootMsg = rebootMsg;
    }

    /**
     * Tells the command of {@link Win2kSCAction#SC_ACTION_RUN_COMMAND}.
     *
     * @return the command, as Windows is to run it; in a change, null leaves the one that there is
     */
    public String getCommand() {
        return command;
    }

    /**
     * Sets the command of {@link Win2kSCAction#SC_ACTION_RUN_COMMAND}.
     *
     * @param command the command, as Windows is to run it; in a change, null leaves the one that there is
     */
    public void setCommand(String command) {
        this.command = command;
    }

    /**
     * Adds an action, behind those that there are.
     *
     * @param action the action; null counts as none being done
     */
    public void addAction(Win2kSCAction action) {
        actions.add(action);
    }

    /**
     * Tells how many actions there are.
     *
     * @return their number
     */
    public int getActionCount() {
        return actions.size();
    }

    /**
     * Tells one action.
     *
     * @param index from 0
     * @return the action
     */
    public Win2kSCAction getActionAt(int index) {
        return actions.get(index);
    }

    @Override
    public String toString() {
        return "Win2kServiceFailureActions[resetPeriod=" + resetPeriod + ", rebootMsg=" + rebootMsg + ", command="
                + command + ", actions=" + actions + "]";
    }
}
