package com.corvane.demo;

import com.corvane.wizard.platform.win32.Win32SecurityServiceImpl;
import com.corvane.wizard.platform.win32.Win32SystemUtilServiceImpl;
import java.util.Arrays;

/** Who runs the installer, and on what; what the library says is checked against the JDK. */
final class WhoAndWhereChapter implements Chapter {
    private static final String ADMINISTRATORS = "S-1-5-32-544";
    private static final String VERSION = "HKLM\\Software\\Microsoft\\Windows NT\\CurrentVersion";
    private static final String SETUP =
            "HKLM\\Software\\Microsoft\\Windows\\CurrentVersion\\Setup";

    private final Win32SystemUtilServiceImpl system = new Win32SystemUtilServiceImpl();

    @Override
    public String name() {
        return "Who and where: the user, the system, drives and directories";
    }

    @Override
    public void run(Stage stage) throws Exception {
        showUser(stage);
        showSystem(stage);
        new DriveScenes().play(stage);
        new DirectoryScenes().play(stage);
    }

    private static void showUser(Stage stage) throws ReflectiveOperationException {
        String[] groups = (String[]) ofToken("getGroupIDs");
        boolean isAdmin = Arrays.asList(groups).contains(ADMINISTRATORS);
        stage.scene("The user, " + ofToken("getDomain") + '\\' + ofToken("getName"));
        stage.gives("an administrator (the JDK's groups say the same)", isAdmin,
                new Win32SecurityServiceImpl()::isCurrentUserAdmin);
    }

    /** By name, because only a JDK for Windows has this class. */
    private static Object ofToken(String getter) throws ReflectiveOperationException {
        Class<?> user = Class.forName("com.sun.security.auth.module.NTSystem");
        return user.getMethod(getter).invoke(user.getConstructor().newInstance());
    }

    private void showSystem(Stage stage) throws Exception {
        stage.scene("The system");
        stage.gives("it is of the NT family", true, system::isWinNTor2K);
        stage.gives("it is Windows ME", false, system::isWinME);
        stage.gives("service pack (the registry says the same)",
                SystemTool.registered(VERSION, "CSDVersion"), system::getOSServiceLevel);
        stage.gives("boot directory (the registry says the same)",
                SystemTool.registered(SETUP, "BootDir"), system::getBootDirectory);
    }
}
