package com.corvane.bench;

import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;
import java.util.function.IntToDoubleFunction;
import java.util.stream.IntStream;

/**
 * Times several works against each other. Each is warmed up first, for an installer calls in a JVM
 * that runs already. Then each round times all of them, forwards and backwards in turn, so that a
 * machine that grows slower or faster does so for all alike.
 */
final class Rounds {
    /** Enough calls to load the classes and to compile what the work runs over and over. */
    static final long WARM_NANOS = 500_000_000;

    private static final long BATCH_NANOS = 2_000_000;

    /** A row that takes longer has fewer rounds. */
    private static final long ROW_NANOS = 10_000_000_000L;

    /** Two forwards, two backwards. */
    private static final int FEWEST = 4;

    private final int count;

    Rounds(int count) {
        this.count = count;
    }

    Samples time(List<Timed> works) throws Exception {
        int[] batches = new int[works.size()];
        for (int i = 0; i < batches.length; i++) {
            batches[i] = warmBatchOf(works.get(i));
        }
        List<double[]> rounds = new ArrayList<>();
        long start = System.nanoTime();
        while (rounds.size() < count
                && (rounds.size() < FEWEST || System.nanoTime() - start < ROW_NANOS)) {
            rounds.add(round(works, batches, rounds.size() % 2 == 0));
        }
        return new Samples(rounds.toArray(double[][]::new));
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

    /**
     * Warms the work up; tells as many calls as fill a batch, or as may be made at once. The warm
     * calls decide: the first, which loads classes, would fill a batch alone, and so would one that
     * waits for a processor.
     */
    private static int warmBatchOf(Timed work) throws Exception {
        int calls = 1;
        long start = System.nanoTime();
        do {
            if (nanos(work, calls) < BATCH_NANOS && calls < work.most()) {
                calls *= 2;
            }
        } while (System.nanoTime() - start < WARM_NANOS);
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
        private static final int FEW = 20;

        int count() {
            return nanos.length;
        }

        /** Too few for a median that the load of the machine does not move. */
        boolean few() {
            return count() < FEW;
        }

        double median(int work) {
            return medianOf(round -> nanos[round][work]);
        }

        /** The median of the ratios in each round, whose works met the same machine. */
        double ratio(int work, int base) {
            return medianOf(round -> nanos[round][work] / nanos[round][base]);
        }

        /** The median of the differences in each round. */
        double difference(int work, int base) {
            return medianOf(round -> nanos[round][work] - nanos[round][base]);
        }

        private double medianOf(IntToDoubleFunction figure) {
            double[] figures = IntStream.range(0, nanos.length).mapToDouble(figure).toArray();
            Arrays.sort(figures);
            return (figures[(figures.length - 1) / 2] + figures[figures.length / 2]) / 2;
        }
    }
}
