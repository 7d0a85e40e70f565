package com.corvane.testing;

import com.corvane.testing.Words.Word;
import com.corvane.util.FileAttributes;
import com.corvane.wizard.platform.win32.environment.WindowsEnvironment;
import com.corvane.wizard.service.ServiceException;
import java.lang.reflect.Field;
import java.lang.reflect.InvocationTargetException;
import java.lang.reflect.Method;
import java.lang.reflect.Modifier;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.Collections;
import java.util.Enumeration;
import java.util.HexFormat;
import java.util.List;
import java.util.stream.Collectors;

/** A native of the library, called by its name with arguments as a scene writes them. */
final class Native {

    /** Classes of natives: Win32DesktopServiceImpl and so on. */
    private static final List<String> SERVICES =
            List.of("Desktop", "File", "Product", "Registry", "Security", "SystemUtil", "WizardInitialize", "");
    private static final List<String> ROOTS = List.of("HKCR", "HKCC", "HKCU", "HKLM", "HKU");

    private interface Work {
        Object run() throws Throwable;
    }

    private final Work work;

    /** {@code words} are the arguments; a list is one of them. */
    Native(String name, List<String> words, Stage stage) {
        Method method = SERVICES.stream().flatMap(service -> Arrays.stream(classOf(service).getMethods()))
                .filter(found -> found.getName().equals(name) && Modifier.isNative(found.getModifiers())).findAny()
                .orElseThrow(() -> new AssertionError("no native has this name: " + name));
        Class<?>[] types = method.getParameterTypes();
        if (types.length != words.size()) {
            throw new AssertionError(name + " takes " + types.length + " arguments, here are " + words.size());
        }
        Object[] arguments = new Object[types.length];
        for (int index = 0; index < types.length; ++index) {
            arguments[index] = argument(types[index], words.get(index), stage);
        }
        work = () -> {
            try {
                Object result = method.invoke(method.getDeclaringClass().getConstructor().newInstance(), arguments);
                return method.getReturnType() == void.class ? "done" : result;
            } catch (InvocationTargetException thrown) {
                throw thrown.getCause();
            }
        };
    }

    /** Whatever else calls the library. */
    Native(Outcome.Action action) {
        work = () -> {
            action.run();
            return "done";
        };
    }

    /** The words between these as {@link Native} takes them: a list is one. */
    static List<String> arguments(String line, List<Word> words) {
        List<String> arguments = new ArrayList<>();
        for (int first = 0; first < words.size(); ++first) {
            int last = first;
            while (words.get(first).text().startsWith("[") && !words.get(last).text().endsWith("]")) {
                ++last;
            }
            arguments.add(Words.raw(line, words.subList(first, last + 1)));
            first = last;
        }
        return arguments;
    }

    private static Class<?> classOf(String service) {
        try {
            return service.isEmpty() ? WindowsEnvironment.class
                    : Class.forName("com.corvane.wizard.platform.win32.Win32" + service + "ServiceImpl");
        } catch (ClassNotFoundException failure) {
            throw new AssertionError(failure);
        }
    }

    private static Object argument(Class<?> type, String word, Stage stage) {
        if (word.equals("null")) {
            return null;
        } else if (type == String.class) {
            return stage.real(unquoted(word));
        } else if (type == int.class) {
            return ROOTS.contains(word) ? ROOTS.indexOf(word) + 1 : (Object) (int) Words.number(word);
        } else if (type == long.class) {
            return Words.number(word);
        } else if (type == boolean.class) {
            return switch (word) {
                case "true" -> true;
                case "false" -> false;
                default -> throw new AssertionError("neither true nor false: " + word);
            };
        } else if (type == byte[].class) {
            return HexFormat.of().parseHex(Words.spelledOut(word).substring(1).replace("_", ""));
        }
        List<String> items = items(word);
        String[] texts = items.stream().map(item -> item.equals("null") ? null : stage.real(unquoted(item)))
                .toArray(String[]::new);
        return type == String[].class ? texts
                : type == Enumeration.class ? Collections.enumeration(Arrays.asList(texts)) : attributes(items);
    }

    private static String unquoted(String word) {
        return word.replace("'", "");
    }

    private static List<String> items(String list) {
        String inside = Words.spelledOut(list.substring(1, list.length() - 1));
        return inside.isEmpty() ? List.of() : List.of(inside.split(", ?"));
    }

    private static FileAttributes attributes(List<String> names) {
        FileAttributes attributes = new FileAttributes();
        for (String name : names) {
            attributes.setAttributeState(constant(name), true);
        }
        return attributes;
    }

    private static int constant(String name) {
        try {
            return FileAttributes.class.getField(name).getInt(null);
        } catch (ReflectiveOperationException failure) {
            throw new AssertionError("no attribute has this name: " + name, failure);
        }
    }

    /** What it comes to, as a scene writes it. */
    String outcome(Stage stage) {
        try {
            return stage.shown(shown(work.run()));
        } catch (Throwable thrown) {
            return stage.shown(shown(thrown));
        }
    }

    private static String shown(Throwable thrown) {
        if (!(thrown instanceof ServiceException exception)) {
            return "throws " + thrown;
        }
        String beside = Hooks.returned().isEmpty() ? "" : ", " + Hooks.returned();
        String message = exception.getMessage();
        String reason = message == null ? "without a message" : "error " + Integer.toUnsignedLong(exception.getReason());
        return exception.getCode() + " " + reason + beside;
    }

    private static String shown(Object result) {
        if (result instanceof byte[] bytes) {
            return "x" + HexFormat.of().withUpperCase().formatHex(bytes);
        } else if (result instanceof Enumeration<?> items) {
            return shown(Collections.list(items).toArray());
        } else if (result instanceof Object[] items) {
            return Arrays.stream(items).map(Native::shown).collect(Collectors.joining(", ", "[", "]"));
        } else if (result instanceof FileAttributes attributes) {
            return Arrays.stream(FileAttributes.class.getFields()).map(Field::getName)
                    .filter(name -> attributes.getAttributeState(constant(name))).toList().toString();
        }
        return "".equals(result) ? "''" : String.valueOf(result);
    }
}
