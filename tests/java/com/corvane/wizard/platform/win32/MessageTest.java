package com.corvane.wizard.platform.win32;

import static org.junit.jupiter.api.Assertions.assertEquals;

import com.corvane.testing.Outcome;
import com.corvane.testing.TestBed;
import com.corvane.testing.Windows;
import org.junit.jupiter.api.Tag;
import org.junit.jupiter.api.Test;
import org.junit.jupiter.api.extension.ExtendWith;

/** Windows' own text for an error, in its language. */
@Tag("any-code-page")
@ExtendWith(TestBed.class)
class MessageTest {

    @Test
    void bothFamiliesSayTheSame() {
        assertEquals(message(Windows.W10), message(Windows.W98));
    }

    private static String message(Windows system) {
        system.use();
        return Outcome.ofVoid(() -> new Win32RegistryServiceImpl().keyExists(0, "")).toString();
    }
}
