package com.corvane.bench;

/**
 * The Win32 calls that answer each row's question, made in a loop of C++. Each returns the
 * nanoseconds that its loop took, -1 when a call failed.
 */
final class BareServices {
    private BareServices() {}

    static native long queryService(String name, int calls);

    static native long listServices(int calls);

    static native long readVersion(String file, int calls);

    /** For an account without rights leaves the policy open in each call, as the library does. */
    static native long listRights(String account, int calls);
}
