package com.corvane.testing;

import com.corvane.wizard.service.ServiceException;
import java.util.Arrays;
import java.util.concurrent.Callable;

/** What a call came to: a value, or what it threw. Two outcomes are equal when Java sees the same. */
public record Outcome(String value, Throwable thrown) {

    /** Something that returns nothing. */
    @FunctionalInterface
    public interface Action {
        void run() throws Exception;
    }

    public static Outcome of(Callable<?> call) {
        try {
            return new Outcome(text(call.call()), null);
        } catch (Throwable thrown) {
            return new Outcome(null, thrown);
        }
    }

    public static Outcome ofVoid(Action action) {
        return of(() -> {
            action.run();
            return "nothing";
        });
    }

    /** Asserts that the action throws ServiceException with this code for this error of Windows. */
    public static void assertFails(int code, long error, Action action) {
        Outcome outcome = ofVoid(action);
        if (!outcome.isFailure(code, error)) {
            throw new AssertionError("expected code " + code + ", error " + error + "; but " + outcome);
        }
    }

    /** What a native returns beside the exception that it throws; see {@link Hooks#returned}. */
    public static String beside(Action action) {
        Outcome outcome = ofVoid(action);
        if (!outcome.isException()) {
            throw new AssertionError("nothing was thrown, but it " + outcome);
        }
        return Hooks.returned();
    }

    private static String text(Object value) {
        String all = Arrays.deepToString(new Object[] {value});
        return all.substring(1, all.length() - 1);
    }

    public boolean isException() {
        return thrown != null;
    }

    /** Whether it is a ServiceException with this code, and a message, for this error of Windows. */
    public boolean isFailure(int code, long error) {
        return hasCode(code) && thrown.getMessage() != null && reason() == (int) error;
    }

    /** The number of Windows' error in a ServiceException. */
    public int reason() {
        return ((ServiceException) thrown).getReason();
    }

    /** Whether it is the failure that nobody expected: no message. */
    public boolean isUnexpectedFailure() {
        return hasCode(ServiceException.UNEXPECTED) && thrown.getMessage() == null;
    }

    public boolean hasCode(int code) {
        return thrown instanceof ServiceException exception && exception.getCode() == code;
    }

    @Override
    public boolean equals(Object other) {
        return other instanceof Outcome outcome && toString().equals(outcome.toString());
    }

    @Override
    public int hashCode() {
        return toString().hashCode();
    }

    @Override
    public String toString() {
        return thrown != null ? thrown.toString() : "returned " + value;
    }
}
