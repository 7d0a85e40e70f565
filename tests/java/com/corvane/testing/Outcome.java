package com.corvane.testing;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertNotNull;
import static org.junit.jupiter.api.Assertions.assertThrows;

import com.corvane.wizard.service.ServiceException;
import java.util.concurrent.Callable;
import org.junit.jupiter.api.function.Executable;

/** What a call threw; null for nothing. */
public record Outcome(Throwable thrown) {

    /** What work gives that can fail only when the test itself is wrong. */
    public static <T> T sure(Callable<T> work) {
        try {
            return work.call();
        } catch (Exception failure) {
            throw new AssertionError(failure);
        }
    }

    public static Outcome ofVoid(Executable action) {
        try {
            action.execute();
            return new Outcome(null);
        } catch (Throwable thrown) {
            return new Outcome(thrown);
        }
    }

    /** Asserts that the action throws ServiceException with this code for this error of Windows. */
    public static void assertFails(int code, long error, Executable action) {
        ServiceException thrown = assertThrows(ServiceException.class, action);
        assertEquals(code + " error " + (int) error, thrown.getCode() + " error " + thrown.getReason());
        assertNotNull(thrown.getMessage());
    }

    @Override
    public String toString() {
        return thrown == null ? "returned nothing" : thrown.toString();
    }
}
