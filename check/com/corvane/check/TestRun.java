package com.corvane.check;

import static org.junit.platform.engine.discovery.DiscoverySelectors.selectPackage;

import com.corvane.wizard.service.ServiceException;
import java.nio.file.AccessDeniedException;
import java.nio.file.FileSystemException;
import java.util.List;
import java.util.regex.Pattern;
import org.junit.platform.engine.TestExecutionResult;
import org.junit.platform.launcher.LauncherDiscoveryRequest;
import org.junit.platform.launcher.TagFilter;
import org.junit.platform.launcher.TestExecutionListener;
import org.junit.platform.launcher.TestIdentifier;
import org.junit.platform.launcher.TestPlan;
import org.junit.platform.launcher.core.LauncherDiscoveryRequestBuilder;
import org.junit.platform.launcher.core.LauncherFactory;

/**
 * Runs the tests with any of these tags. Says each class and each file of scenes that begins, what
 * fails and what is skipped, and why; and at the end the counts.
 */
final class TestRun implements TestExecutionListener {

    /** What begins the last line; behind it stand the counts. */
    static final String END = "tests passed, failed, skipped: ";

    /** Access is denied, it takes an elevated user, a privilege is not held. */
    private static final List<Integer> DENIED = List.of(5, 740, 1314);

    /** The same in what came otherwise than a test expects; what it expects itself stands elsewhere. */
    private static final Pattern CAME_DENIED = Pattern.compile(
            "(?m)(^\\s*came\\s|but it came to |but was: <|CreateProcess ).*\\berror[ =](5|740|1314)\\b");

    private final boolean isAdministrator = WorkFolder.isAdministrator();
    private TestPlan plan;
    private int passed;
    private int failed;
    private int skipped;

    public static void main(String[] tags) {
        LauncherDiscoveryRequest request = LauncherDiscoveryRequestBuilder.request()
                .selectors(selectPackage("com.corvane")).filters(TagFilter.includeTags(List.of(tags))).build();
        TestRun run = new TestRun();
        LauncherFactory.create().execute(request, run);
        System.out.println(END + run.passed + " " + run.failed + " " + run.skipped);
    }

    @Override
    public void testPlanExecutionStarted(TestPlan started) {
        plan = started;
    }

    @Override
    public void executionStarted(TestIdentifier test) {
        if (test.getDisplayName().matches("\\w+(Test|\\.txt)")) {
            System.out.println(test.getDisplayName() + " ...");
        }
    }

    @Override
    public void executionSkipped(TestIdentifier test, String reason) {
        skip(test, reason);
    }

    @Override
    public void executionFinished(TestIdentifier test, TestExecutionResult result) {
        Throwable thrown = result.getThrowable().orElseGet(Throwable::new);
        switch (result.getStatus()) {
            case SUCCESSFUL -> passed += test.isTest() ? 1 : 0;
            case ABORTED -> skip(test, String.valueOf(thrown.getMessage()));
            default -> {
                if (!isAdministrator && tellsOfRights(thrown)) {
                    skip(test, "takes the rights of an administrator: " + thrown);
                } else {
                    fail(test, thrown);
                }
            }
        }
    }

    private static boolean tellsOfRights(Throwable thrown) {
        if (thrown == null) {
            return false;
        }
        String message = String.valueOf(thrown.getMessage());
        return thrown instanceof AccessDeniedException
                || thrown instanceof FileSystemException && message.contains("privilege is not held")
                || thrown instanceof ServiceException failure && DENIED.contains(failure.getReason())
                || CAME_DENIED.matcher(message).find() || tellsOfRights(thrown.getCause());
    }

    private void skip(TestIdentifier test, String reason) {
        ++skipped;
        System.out.println("SKIPPED " + name(test) + "\n    " + reason.replace("Assumption failed: ", ""));
    }

    private void fail(TestIdentifier test, Throwable thrown) {
        ++failed;
        System.out.println("FAILED " + name(test));
        thrown.printStackTrace(System.out);
    }

    /** With all that it is in, but for the engine. */
    private String name(TestIdentifier test) {
        return plan.getParent(test).filter(parent -> parent.getParentId().isPresent())
                .map(parent -> name(parent) + " > ").orElse("") + test.getDisplayName();
    }
}
