package com.corvane.bench;

import com.sun.jna.Pointer;
import com.sun.jna.WString;
import com.sun.jna.platform.win32.COM.COMUtils;
import com.sun.jna.platform.win32.COM.Unknown;
import com.sun.jna.platform.win32.Guid.CLSID;
import com.sun.jna.platform.win32.Guid.IID;
import com.sun.jna.platform.win32.Guid.REFIID;
import com.sun.jna.platform.win32.Ole32;
import com.sun.jna.platform.win32.WTypes;
import com.sun.jna.platform.win32.WinNT.HRESULT;
import com.sun.jna.ptr.PointerByReference;

/** The shell's object for shortcuts, called through JNA, which has no declaration of it. */
final class JnaShortcut extends Unknown {
    private static final CLSID SHELL_LINK = new CLSID("{00021401-0000-0000-C000-000000000046}");
    private static final IID SHELL_LINK_W = new IID("{000214F9-0000-0000-C000-000000000046}");
    private static final IID PERSIST_FILE = new IID("{0000010B-0000-0000-C000-000000000046}");

    // Where the methods stand in the tables of IShellLinkW and IPersistFile.
    private static final int SET_WORKING_DIRECTORY = 9;
    private static final int SET_PATH = 20;
    private static final int SAVE = 6;

    private JnaShortcut(Pointer pointer) {
        super(pointer);
    }

    static void make(String file, String target, String directory) {
        PointerByReference made = new PointerByReference();
        COMUtils.checkRC(Ole32.INSTANCE.CoCreateInstance(
                SHELL_LINK, null, WTypes.CLSCTX_INPROC_SERVER, SHELL_LINK_W, made));
        JnaShortcut link = new JnaShortcut(made.getValue());
        try {
            link.call(SET_PATH, new WString(target));
            link.call(SET_WORKING_DIRECTORY, new WString(directory));
            COMUtils.checkRC(link.QueryInterface(new REFIID(PERSIST_FILE), made));
            save(new JnaShortcut(made.getValue()), file);
        } finally {
            link.Release();
        }
    }

    private static void save(JnaShortcut persistFile, String file) {
        try {
            persistFile.call(SAVE, new WString(file), 1);
        } finally {
            persistFile.Release();
        }
    }

    private void call(int method, Object... arguments) {
        Object[] all = new Object[arguments.length + 1];
        all[0] = getPointer();
        System.arraycopy(arguments, 0, all, 1, arguments.length);
        COMUtils.checkRC(new HRESULT(_invokeNativeInt(method, all)));
    }
}
