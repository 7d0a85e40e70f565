package com.corvane.bench;

import java.util.Arrays;
import java.util.List;
import java.util.function.IntToDoubleFunction;
import java.util.stream.IntStream;

/**
 * Times several works against each other. Each round times all of them, forwards and backwards in
 * turn, so that a machine that grows slower or faster does so for all alike.
 */
final class Rounds {
    private static final long BATCH_NANOS = 2_000_000;

    private final int count;

    Rounds(int count) {
        this.count = count;
    }

    Samples time(List<Timed> works) throws Exception {
        int[] batches = new int[works.size()];
        for (int i = 0; i < batches.length; i++) {
            batches[i] = batchOf(works.get(i));
        }
        double[][] nanos = new double[count][works.size()];
        for (int round = -count / 4; round < count; round++) { // those below 0 are the warm-up
            for (int turn = 0; turn < batches.length; turn++) {
                int i = round % 2 == 0 ? turn : batches.length - 1 - turn;
                nanos[Math.max(round, 0)][i] = (double) nanos(works.get(i), batches[i]) / batches[i];
            }
        }
        return new Samples(nanos);
    }

    /** As many calls as fill a batch. */
    private static int batchOf(Timed work) throws Exception {
        int calls = 1;
        while (nanos(work, calls) < BATCH_NANOS) {
            calls *= 2;
        }
        return calls;
    }

    private static long nanos(Timed work, int calls) throws Exception {
        long nanos = work.nanos(calls);
        if (nanos < 0) {
            throw new IllegalStateException("a call made bare failed");
        }
        return nanos;
    }

    /**
     * What the rounds gave.
     *
     * @param nanos for each round the nanoseconds a call of each work
     */
    record Samples(double[][] nanos) {
        double median(int work) {
            return medianOf(round -> nanos[round][work]);
        }

        /** The median of the ratios in each round, whose works met the same machine. */
        double ratio(int work, int base) {
            return medianOf(round -> nanos[round][work] / nanos[round][base]);
        }

        private double medianOf(IntToDoubleFunction figure) {
            double[] figures = IntStream.range(0, nanos.length).mapToDouble(figure).toArray();
            Arrays.sort(figures);
            return figures[figures.length / 2];
        }
    }
}
