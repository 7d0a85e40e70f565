package com.corvane.wizard.service;

/**
 * A service of the operating system failed.
 *
 * <p>{@link #getCode() The code} says which operation failed, {@link #getMessage() the message} why: it
 * is the system's own text for the error, with the line break that ends it, a blank, and the error's
 * number in parentheses, which {@link #getReason()} gives by itself. A failure that nobody expected
 * (a lack of memory, say) has the code {@link #UNEXPECTED} and no message.
 *
 * <p>The native library makes these exceptions: it calls the constructors and {@link #setSeverity} by
 * name and signature, and reads {@link #OPERATION_NOT_SUPPORTED}.
 */
public class ServiceException extends Exception {

    /** The code of an operation that this Windows does not have. */
    public static final int OPERATION_NOT_SUPPORTED = -1;

    /** The code of an unexpected failure: E_FAIL. */
    public static final int UNEXPECTED = 0x80004005;

    private static final long serialVersionUID = 1L;

    /** Which operation failed. */
    private final int code;

    /** How severe that is. */
    private int severity;

    /**
     * Makes an exception without a message.
     *
     * @param code which operation failed
     */
    public ServiceException(int code) {
        this.code = code;
    }

    /**
     * Makes an exception with a message.
     *
     * @param code which operation failed
     * @param message why it failed
     */
    public ServiceException(int code, String message) {
        super(message);
        this.code = code;
    }

    /**
     * Which operation failed.
     *
     * @return a number, negative but for 1073 of {@code serviceExists}; the operations name theirs
     */
    public int getCode() {
        return code;
    }

    /**
     * Why it failed: the number at the end of the message. It is a Win32 error such as 5
     * (ERROR_ACCESS_DENIED), or an HRESULT. The message has it unsigned; as Java's int, an HRESULT is
     * negative and equals its hexadecimal notation: {@code getReason() == 0x8007000E}.
     *
     * @return the number; 0 when there is no message, or none that ends in a number
     */
    public int getReason() {
        String message = getMessage();
        int number = message == null ? -1 : message.lastIndexOf(" (");
        if (number < 0 || !message.endsWith(")")) {
            return 0;
        }
        try {
            return Integer.parseUnsignedInt(message.substring(number + 2, message.length() - 1));
        } catch (NumberFormatException e) {
            return 0;
        }
    }

    /**
     * How severe the failure is.
     *
     * @return 1 when an account held no right that could be taken away, otherwise 0
     */
    public int getSeverity() {
        return severity;
    }

    /**
     * Says how severe the failure is.
     *
     * @param severity 1 when an account held no right that could be taken away, otherwise 0
     */
    public void setSeverity(int severity) {
        this.severity = severity;
    }

    /**
     * The name of the class, the code and, where there is one, the message. A stack trace begins so.
     *
     * @return these, with a colon and a blank between them
     */
    @Override
    public String toString() {
        String message = getLocalizedMessage();
        return getClass().getName() + ": " + code + (message == null ? "" : ": " + message);
    }
}
