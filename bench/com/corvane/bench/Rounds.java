package com.corvane.bench;

import java.util.ArrayList;
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

    /** A row that takes longer has fewer rounds. */
    private static final long ROW_NANOS = 10_000_000_000L;

    /** One forwards, one backwards. */
    private static final int FEWEST = 2;

    private final int count;

    Rounds(int count) {
        this.count = count;
    }

    Samples time(List<Timed> works) throws Exception {
        int[] batches = new int[works.size()];
        for (int i = 0; i < batches.length; i++) {
            batches[i] = batchOf(works.get(i));
        }
        repeat(works, batches, 0, count / 4, ROW_NANOS / 8); // warms up
        return new Samples(repeat(works, batches, FEWEST, count, ROW_NANOS));
    }

    /** Rounds until there are {@code most}, or {@code fewest} when the time is over. */
    private static double[][] repeat(
            List<Timed> works, int[] batches, int fewest, int most, long nanos) throws Exception {
        List<double[]> rounds = new ArrayList<>();
        long start = System.nanoTime();
        while (rounds.size() < most
                && (rounds.size() < fewest || System.nanoTime() - start < nanos)) {
            rounds.add(round(works, batches, rounds.size() % 2 == 0));
        }
        return rounds.toArray(double[][]::new);
    }

    private static double[] round(List<Timed> works, int[] batches, boolean forwards)
            throws Exception {
        double[] nanos = new double[batches.length];
        for (int turn = 0; turn < batches.length; turn++) {
            int i = forwards ? turn : batches.length - 1 - turn;
            nanos[i] = (double) nanos(works.get(i), batches[i]) / batches[i];
        }
        return nanos;
    }

    /** As many calls as fill a batch, or as may be made at once. */
    private static int batchOf(Timed work) throws Exception {
        int calls = 1;
        while (calls < work.most() && nanos(work, calls) < BATCH_NANOS) {
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
        int count() {
            return nanos.length;
        }

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
            return (figures[(figures.length - 1) / 2] + figures[figures.length / 2]) / 2;
        }
    }
}
