package com.corvane.testing;

/** How COM is started on the calling thread. */
final class Apartment {

    private Apartment() {}

    /** Starts it as the library does, or multithreaded, which keeps the library from starting it. */
    static native void start(boolean multithreaded);
}
