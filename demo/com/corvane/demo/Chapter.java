package com.corvane.demo;

/** One part of what an installer does, played step by step on a {@link Stage}. */
interface Chapter {
    /** The heading under which the chapter's steps are shown. */
    String name();

    /**
     * Plays the chapter. It leaves the system as it found it, also when a step fails, unless
     * another chapter goes on after a reboot. Whatever it throws counts as one failed step.
     */
    void run(Stage stage) throws Exception;
}
