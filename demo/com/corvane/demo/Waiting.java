package com.corvane.demo;

import java.util.concurrent.Callable;
import java.util.function.Predicate;

/** For what somebody else does, who takes some time. */
final class Waiting {
    private static final int TRIES = 600;
    private static final int PAUSE_MILLISECONDS = 50;

    private Waiting() {}

    /** Asks until the answer is a wanted one; returns that, or the last one after half a minute. */
    static <T> T forAnswer(Predicate<T> isWanted, Callable<T> question) throws Exception {
        T answer = question.call();
        for (int i = 0; i < TRIES && !isWanted.test(answer); i++) {
            Thread.sleep(PAUSE_MILLISECONDS);
            answer = question.call();
        }
        return answer;
    }
}
