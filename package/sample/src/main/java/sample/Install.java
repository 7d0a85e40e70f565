package sample;

import com.corvane.wizard.platform.win32.Win32RegistryServiceImpl;
import com.corvane.wizard.service.ServiceException;

/** Writes a value, reads it, takes it away again, and tells how it found the library. */
public final class Install {

    private static final int ROOT = Win32RegistryServiceImpl.HKEY_CURRENT_USER;
    private static final String KEY = "Software\\Corvane Sample";

    private Install() {}

    public static void main(String[] arguments) throws ServiceException {
        Win32RegistryServiceImpl registry = new Win32RegistryServiceImpl();
        registry.createKey(ROOT, "Software", "Corvane Sample");
        registry.setStringValue(ROOT, KEY, "Folder", false, "C:\\Sample");
        System.out.println(registry.getStringValue(ROOT, KEY, "Folder", false) + " by "
                + (registry.getClass().getModule().isNamed() ? registry.getClass().getModule() : "the class path"));
        registry.deleteKey(ROOT, "Software", "Corvane Sample", true);
        try {
            registry.deleteKey(ROOT, "Software", "Corvane Sample", true);
        } catch (ServiceException e) {
            System.out.println(e.getCode() + " " + e.getReason());
        }
    }
}
