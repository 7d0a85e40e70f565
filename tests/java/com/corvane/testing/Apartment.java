package com.corvane.testing;

/** How COM is started on the calling thread. */
final class Apartment {

    private Apartment() {}

    /** Starts it so that the library cannot start it again in its own way. */
    static native void joinMultithreaded();
}
