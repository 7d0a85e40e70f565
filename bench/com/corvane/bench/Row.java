package com.corvane.bench;

import java.util.List;
import java.util.Objects;
import java.util.stream.Stream;

/**
 * One piece of work, done by everybody who can do it.
 *
 * @param name what is done
 * @param items how many things one call brings: 1, or the length of a list
 * @param library this library, called from Java
 * @param required the calls that the library cannot do without, in a plain native method
 * @param bare the Win32 calls that do it, made in a loop of C++
 * @param jna JNA's functions, called from Java
 * @param jdk what the JDK itself has for it; null when it has nothing
 */
record Row(String name, int items, Timed library, Timed required, Timed bare, Timed jna,
        Timed jdk) {
    /** The columns of {@link #works()}. */
    static final int LIBRARY = 0;

    static final int REQUIRED = 1;
    static final int BARE = 2;
    static final int JNA = 3;
    static final int JDK = 4;

    /** Those who do the work; the JDK is last and may be missing. */
    List<Timed> works() {
        return Stream.of(library, required, bare, jna, jdk).filter(Objects::nonNull).toList();
    }
}
