package com.corvane.demo;

import com.corvane.wizard.service.ServiceException;
import java.lang.reflect.Array;
import java.util.List;
import java.util.stream.Collectors;
import java.util.stream.IntStream;

/** Answers and failures as a person reads them. */
final class Text {
    /** A list that is longer gets a line for each of its elements. */
    private static final int LIST_WIDTH = 90;

    private Text() {}

    static String of(Object answer) {
        if (answer instanceof String) {
            return quoted((String) answer);
        }
        if (answer instanceof byte[]) {
            return hex((byte[]) answer);
        }
        return answer != null && answer.getClass().isArray() ? list(answer) : "" + answer;
    }

    static String of(Throwable error) {
        if (!(error instanceof ServiceException)) {
            return error.toString();
        }
        ServiceException failure = (ServiceException) error;
        return "ServiceException: code " + failure.getCode() + ", message "
                + (failure.getMessage() == null ? "none" : quoted(failure.getMessage()));
    }

    /** Line breaks are shown, for a system message ends in one. */
    private static String quoted(String text) {
        return '"' + text.replace("\r", "\\r").replace("\n", "\\n") + '"';
    }

    private static String hex(byte[] bytes) {
        return IntStream.range(0, bytes.length)
                .mapToObj(i -> String.format("%02x", bytes[i]))
                .collect(Collectors.joining(" "));
    }

    private static String list(Object array) {
        List<String> elements = IntStream.range(0, Array.getLength(array))
                .mapToObj(i -> "" + Array.get(array, i)).collect(Collectors.toList());
        String line = elements.isEmpty() ? "nothing" : String.join(", ", elements);
        return line.length() <= LIST_WIDTH ? line : String.join("\n", elements);
    }
}
