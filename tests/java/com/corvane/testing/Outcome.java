package com.corvane.testing;

import com.corvane.wizard.service.ServiceException;
import java.io.IOException;
import java.io.UncheckedIOException;
import java.util.concurrent.Callable;

/** What a call threw; null for nothing. */
public record Outcome(Throwable thrown) {

    /** Something that returns nothing. */
    @FunctionalInterface
    public interface Action {
        void run() throws Exception;
    }

    /** What work gives that can fail only when the test itself is wrong. */
    static <T> T sure(Callable<T> work) {
        try {
            return work.call();
        } catch (IOException failure) {
            throw new UncheckedIOException(failure);
        } catch (Exception failure) {
            throw new AssertionError(failure);
        }
    }

    public static Outcome ofVoid(Action action) {
        try {
            action.run();
            return new Outcome(null);
        } catch (Throwable thrown) {
            return new Outcome(thrown);
        }
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
        return thrown != null ? thrown.toString() : "returned nothing";
    }
}
