package com.corvane.demo;

import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;

/** Owners of files as the JDK reads and sets them. */
final class Accounts {
    private Accounts() {}

    /** Without the domain and the kind of account that the JDK adds: {@code DOMAIN\name (User)}. */
    static String ownerOf(Path file) throws IOException {
        String name = Files.getOwner(file).getName();
        int kind = name.lastIndexOf(" (");
        return name.substring(name.lastIndexOf('\\') + 1, kind < 0 ? name.length() : kind);
    }

    static void setOwner(Path file, String account) throws IOException {
        Files.setOwner(file, file.getFileSystem().getUserPrincipalLookupService()
                .lookupPrincipalByName(account));
    }
}
