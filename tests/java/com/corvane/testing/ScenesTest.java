package com.corvane.testing;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertThrows;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.io.IOException;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.List;
import java.util.TreeSet;
import org.junit.jupiter.api.DynamicContainer;
import org.junit.jupiter.api.DynamicTest;
import org.junit.jupiter.api.Tag;
import org.junit.jupiter.api.TestFactory;
import org.junit.jupiter.api.extension.ExtendWith;

/** All scenes, each a test of its own on each of its systems; and the scenes that must fail. */
@ExtendWith(TestBed.class)
class ScenesTest {

    /** "corvane.test.scene" names the files to play; without it, all are. */
    @TestFactory
    List<DynamicContainer> scenes() throws IOException {
        return scenesIn(Path.of(System.getProperty("corvane.test.scenes")));
    }

    /** Those in a process whose ANSI code page is 932. */
    @TestFactory
    @Tag("cp932")
    List<DynamicContainer> scenesInJapanese() throws IOException {
        assertEquals("MS932", System.getProperty("sun.jnu.encoding"));
        return scenesIn(Path.of(System.getProperty("corvane.test.scenes"), "cp932"));
    }

    private static List<DynamicContainer> scenesIn(Path folder) throws IOException {
        String wanted = System.getProperty("corvane.test.scene", "\\w+");
        List<DynamicContainer> tests = new ArrayList<>();
        for (String name : new TreeSet<>(List.of(folder.toFile().list()))) {
            if (name.matches(wanted + "\\.txt")) {
                tests.add(DynamicContainer.dynamicContainer(name,
                        new SceneFile(folder.resolve(name)).sections.stream().map(SceneFile.Section::tests)));
            }
        }
        return tests;
    }

    /** Each complains in the words of its heading. */
    @TestFactory
    List<DynamicTest> scenesThatMustFail() throws IOException {
        List<DynamicTest> tests = new ArrayList<>();
        Path file = Path.of(System.getProperty("corvane.test.scenes"), "engine", "must_fail.txt");
        for (SceneFile.Section section : new SceneFile(file).sections) {
            for (Scene scene : section.scenes()) {
                tests.add(DynamicTest.dynamicTest(section.heading(), () -> {
                    String said = assertThrows(AssertionError.class, () -> scene.play(Windows.W10)).getMessage();
                    assertTrue(said.contains(section.heading()), said);
                }));
            }
        }
        return tests;
    }
}
