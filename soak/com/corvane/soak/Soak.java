package com.corvane.soak;

import com.corvane.wizard.platform.win32.Win32RegistryServiceImpl;
import com.corvane.wizard.service.ServiceException;
import com.sun.jna.Function;
import com.sun.jna.Memory;
import com.sun.jna.Pointer;
import com.sun.jna.platform.win32.Kernel32;
import com.sun.jna.platform.win32.WinNT.HANDLE;
import com.sun.jna.ptr.IntByReference;
import java.lang.reflect.Method;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.Comparator;
import java.util.List;
import java.util.concurrent.Callable;
import java.util.concurrent.ExecutorService;
import java.util.concurrent.Executors;
import java.util.concurrent.Future;
import java.util.stream.Stream;

/**
 * Calls each native so often, by sixteen threads at once: {@code Soak [CALLS]}. What comes of it must be the same each
 * time, and after the first tenth the process must not hold more than before.
 */
final class Soak {

    private static final int THREADS = 16;
    /** What a JVM takes and gives back meanwhile. A leak of 32 bytes a call is more. */
    private static final long ROOM = 2_500_000;
    private static final ExecutorService WORKERS = Executors.newFixedThreadPool(THREADS);

    private Soak() {}

    public static void main(String[] arguments) throws Exception {
        int calls = arguments.length == 0 ? 100_000 : Integer.parseInt(arguments[0]);
        Path folder = Files.createTempDirectory("soak");
        int failed = 0;
        for (var call : new Calls(folder).all.entrySet()) {
            String failure = soak(call.getValue(), calls);
            failed += failure.isEmpty() ? 0 : 1;
            System.out.println((failure.isEmpty() ? "ok      " : "FAILED  ") + call.getKey() + failure);
        }
        WORKERS.shutdown();
        System.out.println(Resources.now());
        try (Stream<Path> left = Files.walk(folder)) {
            left.sorted(Comparator.reverseOrder()).forEach(path -> path.toFile().delete());
        }
        new Win32RegistryServiceImpl().deleteKey(Calls.ROOT, "Software", "CorvaneSoak", true);
        System.out.println(failed + " failed");
        System.exit(failed == 0 ? 0 : 1);
    }

    /** What is wrong; growth is what comes three times, for the JVM takes memory too. */
    private static String soak(Callable<Object> call, int calls) throws Exception {
        String expected = outcome(call);
        String growth = "";
        for (int round = 0; round < 3; round++) {
            String other = run(call, calls / 10, expected);
            Resources before = Resources.now();
            other += run(call, calls - calls / 10, expected);
            growth = before.growthTo(Resources.now());
            if (growth.isEmpty() || !other.isEmpty()) {
                return other.isEmpty() ? "" : ": first " + expected + ", then" + other;
            }
        }
        return ": " + growth;
    }

    /** So many calls in all, or as many more as the threads do not share alike; tells an outcome that differs. */
    private static String run(Callable<Object> call, int calls, String expected) throws Exception {
        List<Future<String>> others = new ArrayList<>();
        for (int thread = 0; thread < THREADS; thread++) {
            others.add(WORKERS.submit(() -> {
                String other = "";
                for (int count = 0; count < (calls + THREADS - 1) / THREADS && other.isEmpty(); count++) {
                    String outcome = outcome(call);
                    other = outcome.equals(expected) ? "" : " " + outcome;
                }
                return other;
            }));
        }
        StringBuilder differing = new StringBuilder();
        for (Future<String> other : others) {
            differing.append(other.get());
        }
        return differing.toString();
    }

    private static String outcome(Callable<Object> call) throws Exception {
        try {
            return shown(call.call());
        } catch (ServiceException failure) {
            return failure.toString();
        }
    }

    /** With all elements of an array, and all that the getters of an object say. */
    private static String shown(Object value) throws ReflectiveOperationException {
        if (value == null || !value.getClass().getName().startsWith("com.corvane.")) {
            return Arrays.deepToString(new Object[] {value});
        }
        StringBuilder text = new StringBuilder();
        for (Method method : value.getClass().getMethods()) {
            if (method.getName().matches("(get|is)(?!Class$).*") && method.getParameterCount() == 0) {
                text.append(method.getName()).append('=').append(shown(method.invoke(value))).append(' ');
            }
        }
        return text.toString();
    }

    /** What the process holds of Windows: its memory in two counts, handles, and what is of its windows. */
    private record Resources(long workingSet, long privateBytes, long handles, long objects) {

        private static final int COUNTERS_SIZE = 72; // PROCESS_MEMORY_COUNTERS

        static Resources now() {
            System.gc();
            HANDLE process = Kernel32.INSTANCE.GetCurrentProcess();
            Memory counters = new Memory(COUNTERS_SIZE);
            Function.getFunction("kernel32", "K32GetProcessMemoryInfo").invoke(
                    new Object[] {process, counters, COUNTERS_SIZE});
            Function objects = Function.getFunction("user32", "GetGuiResources");
            return new Resources(counters.getLong(16), counters.getLong(56), handles(process),
                    objects.invokeInt(new Object[] {process, 0}) + objects.invokeInt(new Object[] {process, 1}));
        }

        /** Where Windows does not count them (Wine), the place of a new one, which is the first that is free. */
        private static long handles(HANDLE process) {
            IntByReference count = new IntByReference();
            Function.getFunction("kernel32", "GetProcessHandleCount").invokeInt(new Object[] {process, count});
            HANDLE event = Kernel32.INSTANCE.CreateEvent(null, true, false, null);
            long place = Pointer.nativeValue(event.getPointer()) / 4;
            Kernel32.INSTANCE.CloseHandle(event);
            return count.getValue() == 0 ? place : count.getValue();
        }

        /** What there is more of later; empty when there is not. */
        String growthTo(Resources later) {
            boolean grew = later.workingSet > workingSet + ROOM || later.privateBytes > privateBytes + ROOM
                    || later.handles > handles + 2 || later.objects > objects;
            return grew ? "grew from " + this + " to " + later : "";
        }
    }
}
