package com.corvane.demo;

/** Takes back what is there of the installation, where nobody starts Windows anew for the chapters that remove it. */
final class UndoChapter implements Chapter {
    @Override
    public String name() {
        return "Taken back";
    }

    @Override
    public void run(Stage stage) {
        BeforeChapter.clear(stage);
    }
}
