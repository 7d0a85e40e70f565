package com.corvane.bench;

import com.corvane.wizard.platform.win32.Win32ServiceImpl;
import com.corvane.wizard.platform.win32.security.WindowsAccountPrivilegeServiceImpl;
import com.corvane.wizard.service.ServiceException;
import java.nio.file.Path;
import java.util.List;

/** What the system runs, what files tell and what accounts may. The JDK knows nothing of it. */
final class ServiceRows implements RowGroup {
    /** What the system's own parts need, so that it is there everywhere. */
    private static final String SERVICE = "RpcSs";
    private static final String FILE =
            Path.of(System.getenv("SystemRoot"), "system32", "kernel32.dll").toString();
    private static final String ACCOUNT = System.getProperty("user.name");
    private static final String HERE = "";

    /** Each call for an account without rights leaves a policy open. */
    private static final int LISTS_A_ROUND = 8;

    private final Win32ServiceImpl services = new Win32ServiceImpl();
    private final WindowsAccountPrivilegeServiceImpl rights =
            new WindowsAccountPrivilegeServiceImpl();

    @Override
    public List<Row> rows() {
        return List.of(state(), list(), version(), rights());
    }

    /** What the figures of the rights mean here. */
    String note() throws ServiceException {
        int held = rights.nativeEnumerateAccountRights(ACCOUNT, HERE).length;
        return "\"rights of an account\": " + ACCOUNT + " holds " + held + (held > 0 ? "."
                : ", as everybody does under Wine, which keeps none: the way to that answer.");
    }

    private Row state() {
        return new Row("state of a service", 1,
                Timed.of(() -> services.queryNTServiceStatus(SERVICE)),
                Timed.of(() -> RequiredServices.queryService(SERVICE)),
                calls -> BareServices.queryService(SERVICE, calls),
                Timed.of(() -> JnaServices.queryService(SERVICE)),
                null);
    }

    private Row list() {
        int types = Win32ServiceImpl.SERVICE_DRIVER | Win32ServiceImpl.SERVICE_WIN32;
        return new Row("list of all services", RequiredServices.listServices().length,
                Timed.of(() -> services.enumNTServiceKeys(
                        types, Win32ServiceImpl.SERVICE_STATE_ALL)),
                Timed.of(RequiredServices::listServices),
                BareServices::listServices,
                Timed.of(JnaServices::listServices),
                null);
    }

    private Row version() {
        return new Row("version of a file", 1,
                Timed.of(() -> services.getFixedFileInfo(FILE)),
                Timed.of(() -> RequiredServices.readVersion(FILE)),
                calls -> BareServices.readVersion(FILE, calls),
                Timed.of(() -> JnaServices.readVersion(FILE)),
                null);
    }

    private Row rights() {
        return new Row("rights of an account", 1,
                Timed.atMost(LISTS_A_ROUND,
                        Timed.of(() -> rights.nativeEnumerateAccountRights(ACCOUNT, HERE))),
                Timed.atMost(LISTS_A_ROUND,
                        Timed.of(() -> RequiredServices.listRights(ACCOUNT, HERE))),
                Timed.atMost(LISTS_A_ROUND, calls -> BareServices.listRights(ACCOUNT, calls)),
                Timed.atMost(LISTS_A_ROUND, Timed.of(() -> JnaServices.listRights(ACCOUNT))),
                null);
    }

    @Override
    public void close() {}
}
