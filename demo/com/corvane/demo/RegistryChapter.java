package com.corvane.demo;

import static com.corvane.wizard.platform.win32.Win32RegistryServiceImpl.HKEY_CURRENT_USER;
import static com.corvane.wizard.platform.win32.Win32RegistryServiceImpl.HKEY_LOCAL_MACHINE;
import static com.corvane.wizard.platform.win32.Win32RegistryServiceImpl.REG_BINARY;
import static com.corvane.wizard.platform.win32.Win32RegistryServiceImpl.REG_DWORD;
import static com.corvane.wizard.platform.win32.Win32RegistryServiceImpl.REG_EXPAND_SZ;
import static com.corvane.wizard.platform.win32.Win32RegistryServiceImpl.REG_MULTI_SZ;
import static com.corvane.wizard.platform.win32.Win32RegistryServiceImpl.REG_SZ;

import com.corvane.wizard.platform.win32.Win32RegistryServiceImpl;
import com.corvane.wizard.service.ServiceException;
import java.util.Arrays;
import java.util.stream.Stream;

/** The registry entries of a small product: written, read back, counted, and removed again. */
final class RegistryChapter implements Chapter {
    private static final int USER = HKEY_CURRENT_USER;
    private static final String VENDOR = "Corvane Demo";
    private static final String PARENT = "Software\\" + VENDOR;
    private static final String PRODUCT = PARENT + "\\Harbour Notes";

    private static final String TITLE = "Harbour Notes 2.1";
    private static final String DIRECTORY = "%ProgramFiles%\\Harbour Notes";
    private static final int BUILD = 20417;
    private static final byte[] SIGNATURE = {0x48, 0x4e, 0x00, (byte) 0xff, 0x21, (byte) 0x80};
    private static final String[] LANGUAGES = {"English", "日本語", "Français"};

    private static final int NOT_READ = -100008;

    private final Win32RegistryServiceImpl registry = new Win32RegistryServiceImpl();

    @Override
    public String name() {
        return "Registry: the entries of a small product, under HKCU\\" + PARENT;
    }

    @Override
    public void run(Stage stage) {
        try {
            createKeys(stage);
            writeValues(stage);
            readValues(stage);
            lookAround(stage);
            removePieces(stage);
            failOnPurpose(stage);
            askTheSystem(stage);
        } finally {
            cleanUp(stage);
        }
    }

    private void createKeys(Stage stage) {
        stage.scene("Keys");
        stage.does("create the vendor's key", () -> registry.createKey(USER, "Software", VENDOR));
        stage.does("create the product's key",
                () -> registry.createKey(USER, PARENT, "Harbour Notes"));
        stage.gives("it exists", true, () -> registry.keyExists(USER, PRODUCT));
        stage.gives("it is empty", true, () -> registry.isKeyEmpty(USER, PRODUCT));
    }

    private void writeValues(Stage stage) {
        stage.scene("Values of every type");
        stage.does("write Title, a string",
                () -> registry.setStringValue(USER, PRODUCT, "Title", false, TITLE));
        stage.does("write Directory, an expandable string",
                () -> registry.setStringValue(USER, PRODUCT, "Directory", true, DIRECTORY));
        stage.does("write Build, a 32-bit number",
                () -> registry.set32BitValue(USER, PRODUCT, "Build", BUILD));
        stage.does("write Signature, bytes",
                () -> registry.setBinaryValue(USER, PRODUCT, "Signature", SIGNATURE));
        stage.does("write Languages, a list of strings",
                () -> registry.setMultiStringValue(USER, PRODUCT, "Languages", LANGUAGES));
    }

    private void readValues(Stage stage) {
        stage.scene("Read back");
        stage.gives("Title", TITLE, () -> registry.getStringValue(USER, PRODUCT, "Title", true));
        stage.gives("Directory as stored", DIRECTORY,
                () -> registry.getStringValue(USER, PRODUCT, "Directory", false));
        stage.gives("Directory expanded", System.getenv("ProgramFiles") + "\\Harbour Notes",
                () -> registry.getStringValue(USER, PRODUCT, "Directory", true));
        stage.gives("Build", BUILD, () -> registry.get32BitValue(USER, PRODUCT, "Build"));
        stage.gives("Signature", SIGNATURE,
                () -> registry.getBinaryValue(USER, PRODUCT, "Signature"));
        stage.gives("Languages", LANGUAGES,
                () -> registry.getMultiStringValue(USER, PRODUCT, "Languages"));
    }

    private void lookAround(Stage stage) {
        String[] names = {"Build", "Directory", "Languages", "Signature", "Title"};
        stage.scene("What is there");
        stage.gives("names of the values", names,
                () -> sorted(registry.getKeyValueNames(USER, PRODUCT)));
        stage.gives("their types", new int[] {REG_DWORD, REG_EXPAND_SZ, REG_MULTI_SZ,
                REG_BINARY, REG_SZ}, () -> typesOf(names));
        stage.gives("count of the values", 5, () -> registry.countValuesInKey(USER, PRODUCT));
        stage.gives("longest of the names, in characters", "Directory".length(),
                () -> registry.longestValueNameLength(USER, PRODUCT));
        // The system stores the terminator too when it finds one behind the text.
        stage.gives("longest of their data, in bytes", 2 * (DIRECTORY.length() + 1),
                () -> registry.longestValueNameData(USER, PRODUCT));
        stage.gives("names of the vendor's keys", new String[] {"Harbour Notes"},
                () -> registry.getSubkeyNames(USER, PARENT));
        stage.gives("the machine's part has a Software key", true,
                () -> registry.keyExists(HKEY_LOCAL_MACHINE, "Software"));
    }

    /** The order in which the system lists names is not defined. */
    private static String[] sorted(String[] names) {
        Arrays.sort(names);
        return names;
    }

    private int[] typesOf(String[] names) throws ServiceException {
        int[] types = new int[names.length];
        for (int i = 0; i < names.length; i++) {
            types[i] = registry.getValueType(USER, PRODUCT, names[i]);
        }
        return types;
    }

    private void removePieces(Stage stage) {
        stage.scene("A value and a tree that go again");
        stage.does("write Trial", () -> registry.set32BitValue(USER, PRODUCT, "Trial", 30));
        stage.does("delete Trial", () -> registry.deleteValue(USER, PRODUCT, "Trial", true));
        stage.gives("Trial exists", false, () -> registry.valueExists(USER, PRODUCT, "Trial"));
        stage.does("create Cache\\Index\\Words", this::createTree);
        stage.gives("count of the sub-keys", 1, () -> registry.countSubKeys(USER, PRODUCT));
        stage.gives("longest name of a sub-key, in characters", "Cache".length(),
                () -> registry.longestSubKeyNameLength(USER, PRODUCT));
        stage.does("delete Cache and all below it",
                () -> registry.deleteKey(USER, PRODUCT, "Cache", true));
        stage.gives("Cache exists", false, () -> registry.keyExists(USER, PRODUCT + "\\Cache"));
    }

    private void createTree() throws ServiceException {
        registry.createKey(USER, PRODUCT, "Cache");
        registry.createKey(USER, PRODUCT + "\\Cache", "Index");
        registry.createKey(USER, PRODUCT + "\\Cache\\Index", "Words");
    }

    private void failOnPurpose(Stage stage) {
        stage.scene("A step that must fail");
        stage.refuses("read Licence, which is not there", NOT_READ,
                () -> registry.getStringValue(USER, PRODUCT, "Licence", false));
    }

    private void askTheSystem(Stage stage) {
        stage.scene("The same entries as the system's own tool shows them");
        String answer = stage.run("reg", "query", "HKCU\\" + PRODUCT);
        stage.gives("all values are shown", true,
                () -> Stream.of(TITLE, DIRECTORY, "0x4fc1", "484E00FF2180", "English")
                        .allMatch(answer::contains));
    }

    private void cleanUp(Stage stage) {
        stage.scene("Clean up");
        stage.does("delete the vendor's key", RegistryChapter::clear);
        stage.run(1, "reg", "query", "HKCU\\" + PARENT);
    }

    /** Also what a run that was broken off has left. */
    static void clear() throws ServiceException {
        new Win32RegistryServiceImpl().deleteKey(USER, "Software", VENDOR, false);
    }
}
