package com.corvane.bench;

import java.net.URISyntaxException;
import java.nio.file.Path;

/** Loads the benchmark's own DLL, which stands beside its jar. */
final class NativeLibrary {
    private NativeLibrary() {}

    static void load() throws URISyntaxException {
        Path jar = Path.of(Bench.class.getProtectionDomain().getCodeSource().getLocation().toURI());
        System.load(jar.resolveSibling("corvane_bench.dll").toString());
    }
}
