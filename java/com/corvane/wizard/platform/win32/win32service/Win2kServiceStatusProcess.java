package com.corvane.wizard.platform.win32.win32service;

/**
 * The state of a service with the process that it runs in. Windows 2000 and later tell it.
 *
 * <p>The native library calls the constructor and the setters by name and signature.
 */
public class Win2kServiceStatusProcess extends NTServiceStatus {

    /** A flag: it runs in a process of Windows that must not end. */
    public static final int SERVICE_RUNS_IN_SYSTEM_PROCESS = 1;

    private int processId;
    private int serviceFlags;

    /** Makes an object of zeros; the native library sets what it is. */
    public Win2kServiceStatusProcess() {}

    /**
     * Tells the process that it runs in.
     *
     * @return the number of the process; 0 when it does not run
     */
    public int getProcessId() {
        return processId;
    }

    /**
     * Sets the process that it runs in.
     *
     * @param processId the number of the process; 0 when it does not run
     */
    public void setProcessId(int processId) {
        this.processId = processId;
    }

    /**
     * Tells whether that process is one of Windows.
     *
     * @return 0 or {@link #SERVICE_RUNS_IN_SYSTEM_PROCESS}
     */
    public int getServiceFlags() {
        return serviceFlags;
    }

    /**
     * Sets whether that process is one of Windows.
     *
     * @param serviceFlags 0 or {@link #SERVICE_RUNS_IN_SYSTEM_PROCESS}
     */
    public void setServiceFlags(int serviceFlags) {
        this.serviceFlags = serviceFlags;
    }

    @Override
    public String toString() {
        return "Win2kServiceStatusProcess[" + super.toString() + ", processId=" + getProcessId() + ", serviceFlags="
                + getServiceFlags() + "]";
    }
}
