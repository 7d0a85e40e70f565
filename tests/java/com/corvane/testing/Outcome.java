package com.corvane.testing;

import com.corvane.wizard.service.ServiceException;
import java.util.Arrays;
import java.util.concurrent.Callable;

/** What a call came to: a value, or what it threw. */
public record Outcome(String value, Throwable thrown) {

    /** Something that returns nothing. */
    @FunctionalInterface
    public interface Action {
        void run() throws Exception;
    }

    public static Outcome of(Callable<?> call) {
        try {
            String text = Arrays.deepToString(new Object[] {call.call()});
            return new Outcome(text.substring(1, text.length() - 1), null);
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
        if (!(outcome.thrown instanceof ServiceException exception) || exception.getCode() != code
                || exception.getMessage() == null || exception.getReason() != (int) error) {
            throw new AssertionError("expected code " + code + ", error " + error + "; but it " + outcome);
        }
    }

    @Override
    public String toString() {
        return thrown != null ? thrown.toString() : "returned " + value;
    }
}
