package com.corvane.bench;

/** Work that can be done a given number of times and tells how long that took. */
@FunctionalInterface
interface Timed {
    /** The nanoseconds that {@code calls} calls took; negative when one of them failed. */
    long nanos(int calls) throws Exception;

    /** How many calls may be made at once: they are doubled as long as there are fewer. */
    default int most() {
        return Integer.MAX_VALUE;
    }

    /** Work that is not done more often at once, because each call leaves something behind. */
    static Timed atMost(int most, Timed work) {
        return new Timed() {
            @Override
            public long nanos(int calls) throws Exception {
                return work.nanos(calls);
            }

            @Override
            public int most() {
                return most;
            }
        };
    }

    /** Calls made from Java, so that the way from Java to the system and back is in their time. */
    static Timed of(Call call) {
        return calls -> {
            long start = System.nanoTime();
            for (int i = 0; i < calls; i++) {
                call.run();
            }
            return System.nanoTime() - start;
        };
    }

    /** Work on something that is made anew before each call, while the clock stands. */
    static Timed on(Call making, Timed work) {
        return calls -> {
            long sum = 0;
            for (int i = 0; i < calls; i++) {
                making.run();
                long nanos = work.nanos(1);
                if (nanos < 0) {
                    return nanos;
                }
                sum += nanos;
            }
            return sum;
        };
    }

    /** One call from Java; what it answers is not looked at. */
    @FunctionalInterface
    interface Call {
        void run() throws Exception;
    }
}
