package com.corvane.testing;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertNotNull;
import static org.junit.jupiter.api.Assertions.assertThrows;

import com.corvane.wizard.service.ServiceException;
import java.util.concurrent.Callable;
import org.junit.jupiter.api.function.Executable;
import org.junit.platform.commons.function.Try;

/** How a call ends. */
public final class Outcome {

    private Outcome() {}

    /** What work gives that can fail only when the test itself is wrong. */
    public static <T> T sure(Callable<T> work) {
        return Try.call(work).getOrThrow(IllegalStateException::new);
    }

    /** What the action throws; null for nothing. */
    public static Throwable thrownBy(Executable action) {
        try {
            action.execute();
            return null;
        } catch (Throwable thrown) {
            return thrown;
        }
    }

    /** Asserts that the action throws ServiceException with this code for this error of Windows. */
    public static void assertFails(int code, long error, Executable action) {
        ServiceException thrown = assertThrows(ServiceException.class, action);
        assertEquals(code + " error " + (int) error, thrown.getCode() + " error " + thrown.getReason());
        assertNotNull(thrown.getMessage());
    }
}
