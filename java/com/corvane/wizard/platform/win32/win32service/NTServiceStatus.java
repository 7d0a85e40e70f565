package com.corvane.wizard.platform.win32.win32service;

/**
 * The state of a service.
 *
 * <p>The native library calls the constructor and the setters by name and signature.
 */
public class NTServiceStatus {

    /** A state: is not running. */
    public static final int SERVICE_STOPPED = 1;

    /** A state: is being started. */
    public static final int SERVICE_START_PENDING = 2;

    /** A state: is being stopped. */
    public static final int SERVICE_STOP_PENDING = 3;

    /** A state: is running. */
    public static final int SERVICE_RUNNING = 4;

    /** A state: is going on after a pause. */
    public static final int SERVICE_CONTINUE_PENDING = 5;

    /** A state: is going to pause. */
    public static final int SERVICE_PAUSE_PENDING = 6;

    /** A state: is paused. */
    public static final int SERVICE_PAUSED = 7;

    /** A control that is accepted: to stop. */
    public static final int SERVICE_ACCEPT_STOP = 1;

    /** Controls that are accepted: to pause and to go on. */
    public static final int SERVICE_ACCEPT_PAUSE_CONTINUE = 2;

    /** A control that is accepted: that Windows ends. */
    public static final int SERVICE_ACCEPT_SHUTDOWN = 4;

    private int serviceType;
    private int currentState;
    private int controlsAccepted;
    private int win32ExitCode;
    private int serviceSpecificExitCode;
    private int checkPoint;
    private int waitHint;

    /** Makes an object of zeros; the native library sets what it is. */
    public NTServiceStatus() {}

    /**
     * Tells the type.
     *
     * @return a type, as in {@link NTServiceConfig}, perhaps with the flag for the desktop
     */
    public int getServiceType() {
        return serviceType;
    }

    /**
     * Sets the type.
     *
     * @param serviceType a type, as in {@link NTServiceConfig}, perhaps with the flag for the desktop
     */
    public void setServiceType(int serviceType) {
        this.serviceType = serviceType;
    }

    /**
     * Tells the state.
     *
     * @return one of the states
     */
    public int getCurrentState() {
        return currentState;
    }

    /**
     * Sets the state.
     *
     * @param currentState one of the states
     */
    public void setCurrentState(int currentState) {
        this.currentState = currentState;
    }

    /**
     * Tells which controls it accepts now.
     *
     * @return the constants for them, added up
     */
    public int getControlsAccepted() {
        return controlsAccepted;
    }

    /**
     * Sets which controls it accepts now.
     *
     * @param controlsAccepted the constants for them, added up
     */
    public void setControlsAccepted(int controlsAccepted) {
        this.controlsAccepted = controlsAccepted;
    }

    /**
     * Tells why it ended or cannot start.
     *
     * @return a Win32 error; 0 for none; 1066 (ERROR_SERVICE_SPECIFIC_ERROR) when the other code tells
     */
    public int getWin32ExitCode() {
        return win32ExitCode;
    }

    /**
     * Sets why it ended or cannot start.
     *
     * @param win32ExitCode a Win32 error; 0 for none; 1066 (ERROR_SERVICE_SPECIFIC_ERROR) when the other code tells
     */
    public void setWin32ExitCode(int win32ExitCode) {
        this.win32ExitCode = win32ExitCode;
    }

    /**
     * Tells the code of its own.
     *
     * @return a number of the service's own
     */
    public int getServiceSpecificExitCode() {
        return serviceSpecificExitCode;
    }

    /**
     * Sets the code of its own.
     *
     * @param serviceSpecificExitCode a number of the service's own
     */
    public void setServiceSpecificExitCode(int serviceSpecificExitCode) {
        this.serviceSpecificExitCode = serviceSpecificExitCode;
    }

    /**
     * Tells how far it is.
     *
     * @return a number that grows while it starts, stops, pauses or goes on
     */
    public int getCheckPoint() {
        return checkPoint;
    }

    /**
     * Sets how far it is.
     *
     * @param checkPoint a number that grows while it starts, stops, pauses or goes on
     */
    public void setCheckPoint(int checkPoint) {
        this.checkPoint = checkPoint;
    }

    /**
     * Tells how long its next step may take.
     *
     * @return milliseconds
     */
    public int getWaitHint() {
        return waitHint;
    }

    /**
     * Sets how long its next step may take.
     *
     * @param waitHint milliseconds
     */
    public void setWaitHint(int waitHint) {
        this.waitHint = waitHint;
    }

    @Override
    public String toString() {
        return "NTServiceStatus[serviceType=" + getServiceType() + ", currentState=" + getCurrentState()
                + ", controlsAccepted=" + getControlsAccepted() + ", win32ExitCode=" + getWin32ExitCode()
                + ", serviceSpecificExitCode=" + getServiceSpecificExitCode() + ", checkPoint=" + getCheckPoint()
                + ", waitHint=" + getWaitHint() + "]";
    }
}
