package com.corvane.testing;

import com.corvane.wizard.platform.win32.Win32DesktopServiceImpl;
import com.corvane.wizard.platform.win32.Win32Library;
import com.corvane.wizard.platform.win32.Win32RegistryServiceImpl;
import com.sun.jna.platform.win32.Ole32;
import java.io.File;
import java.lang.reflect.InvocationTargetException;
import java.net.URL;
import java.net.URLClassLoader;
import java.net.URLDecoder;
import java.nio.charset.StandardCharsets;

/**
 * A program that loads the library as an installer does, and says how that went. Where "corvane.test.com"
 * says so, COM is started first, and a shortcut is tried. With arguments it loads the library once for each,
 * by a class loader that is gone afterwards and on an interrupted thread; the argument is the temporary folder,
 * encoded as in a URL.
 */
public final class LoadProbe {

    private LoadProbe() {}

    public static void main(String[] arguments) throws Exception {
        for (String folder : arguments) {
            System.setProperty("java.io.tmpdir", URLDecoder.decode(folder.substring(1), StandardCharsets.UTF_8));
            System.out.println(loadAnew());
            System.gc();
        }
        if (arguments.length == 0) {
            load(System.getProperty("corvane.test.com"));
        }
    }

    private static void load(String com) {
        try {
            if (com != null) {
                Ole32.INSTANCE.CoInitializeEx(null,
                        com.equals("multithreaded") ? Ole32.COINIT_MULTITHREADED : Ole32.COINIT_APARTMENTTHREADED);
            }
            Win32Library.load();
            Win32Library.load();
            System.out.println("loaded, answers " + new Win32RegistryServiceImpl().keyExists(3, null));
            if (com != null) {
                new Win32DesktopServiceImpl().createDesktopItem(
                        System.getProperty("java.io.tmpdir"), "group", "n", "C:\\x.exe", "", "", "");
            }
        } catch (Exception | UnsatisfiedLinkError failure) {
            System.out.println(failure);
        }
    }

    private static String loadAnew() throws Exception {
        URL jar = new File(System.getProperty("java.class.path").split(File.pathSeparator)[0]).toURI().toURL();
        Thread.currentThread().interrupt();
        try (URLClassLoader loader = new URLClassLoader(new URL[] {jar}, null)) {
            Class<?> registry = Class.forName(Win32RegistryServiceImpl.class.getName(), true, loader);
            Object answer = registry.getMethod("keyExists", int.class, String.class)
                    .invoke(registry.getConstructor().newInstance(), 3, null);
            return Thread.interrupted() ? "loaded, answers " + answer : "the interrupt is lost";
        } catch (InvocationTargetException failure) {
            return failure.getCause().toString();
        } catch (LinkageError failure) {
            return failure.toString();
        }
    }
}
