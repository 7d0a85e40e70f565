package com.corvane.testing;

import static com.corvane.testing.Outcome.sure;

import com.corvane.util.FileAttributes;
import com.corvane.wizard.platform.win32.Win32Library;
import com.corvane.wizard.platform.win32.win32service.Win2kSCAction;
import com.corvane.wizard.service.ServiceException;
import java.lang.reflect.Field;
import java.lang.reflect.InvocationTargetException;
import java.lang.reflect.Method;
import java.lang.reflect.Modifier;
import java.util.Arrays;
import java.util.Collections;
import java.util.Enumeration;
import java.util.HexFormat;
import java.util.List;
import java.util.Map;
import java.util.Optional;
import java.util.function.Function;
import java.util.regex.MatchResult;
import java.util.regex.Pattern;
import java.util.stream.Collectors;
import java.util.stream.IntStream;
import java.util.stream.Stream;
import org.junit.platform.commons.support.ReflectionSupport;

/** A native of the library, called by its name with arguments as a scene writes them. */
public final class Native {

    /** All of the library, by their names. */
    public static final Map<String, Method> NATIVES =
            ReflectionSupport.findAllClassesInPackage(Win32Library.class.getPackageName(), type -> true, name -> true)
                    .stream().flatMap(type -> Arrays.stream(type.getDeclaredMethods()))
                    .filter(method -> Modifier.isNative(method.getModifiers()))
                    .collect(Collectors.toMap(Method::getName, Function.identity(), (one, same) -> one));
    private static final Map<String, Boolean> TRUTHS = Map.of("true", true, "false", false);
    private static final List<String> ROOTS = List.of("HKCR", "HKCC", "HKCU", "HKLM", "HKU");

    /** A list is one argument. */
    private static final Pattern WORD = Pattern.compile("(?<!\\S)\\[[^]]*]|(?:'[^']*'|[^\\s'])+");

    private static String message = "";

    private final Stage stage;
    private final Method method;
    private final Object[] arguments;
    /** The program that it runs, if any. */
    private final Optional<Requested> request;

    /** {@code NAME ARGUMENT...} */
    Native(String call, Stage stage) {
        this.stage = stage;
        List<String> words = WORD.matcher(call).results().map(MatchResult::group).toList();
        method = Optional.ofNullable(NATIVES.get(words.get(0)))
                .orElseThrow(() -> new AssertionError("no native has this name: " + words.get(0)));
        Class<?>[] types = method.getParameterTypes();
        if (types.length != words.size() - 1) {
            throw new AssertionError("wrong number of arguments: " + call);
        }
        arguments = IntStream.range(0, types.length).mapToObj(at -> argument(types[at], words.get(at + 1))).toArray();
        request = Stream.of(arguments).filter(Requested.class::isInstance).map(Requested.class::cast).findAny();
    }

    private Object argument(Class<?> type, String word) {
        return word.equals("null") ? null : switch (type.getSimpleName()) {
            case "String" -> text(word);
            case "int" -> ROOTS.contains(word) ? ROOTS.indexOf(word) + 1 : (int) Words.number(word);
            case "long" -> Words.number(word);
            case "boolean" -> TRUTHS.get(word);
            case "byte[]" -> Words.bytes(word);
            case "Win2kSCAction" -> action(word.split("/"));
            case "String[]" -> texts(word).toArray(String[]::new);
            case "Object" -> new Requested(texts(word));
            case "Enumeration" -> Collections.enumeration(texts(word));
            case "FileAttributes" -> attributes(items(word));
            default -> record(type, items(word));
        };
    }

    private String text(String word) {
        return word.equals("null") ? null : stage.real(word.replace("'", ""));
    }

    private List<String> texts(String list) {
        return items(list).stream().map(this::text).collect(Collectors.toList());
    }

    private static Win2kSCAction action(String[] numbers) {
        return new Win2kSCAction(Integer.parseInt(numbers[0]), Integer.parseInt(numbers[1]));
    }

    /** {@code [startType=2, action=1/500]}: each is set, or added. */
    private Object record(Class<?> type, List<String> items) {
        Object record = sure(() -> type.getConstructor().newInstance());
        for (String item : items) {
            String[] parts = item.split("=", 2);
            Method setter = Arrays.stream(type.getDeclaredMethods())
                    .filter(method -> method.getName().matches("(?i)(set|add)" + parts[0])).findAny().orElseThrow();
            sure(() -> setter.invoke(record, argument(setter.getParameterTypes()[0], parts[1])));
        }
        return record;
    }

    /** {@code [a, b]}, and {@code a+b} within a list. */
    private static List<String> items(String list) {
        boolean within = !list.startsWith("[");
        String inside = Words.spelledOut(within ? list : list.substring(1, list.length() - 1));
        return inside.isEmpty() ? List.of() : List.of(inside.split(within ? "\\+" : ", ?"));
    }

    private static FileAttributes attributes(List<String> names) {
        FileAttributes attributes = new FileAttributes();
        names.forEach(name -> attributes.setAttributeState(constant(name), true));
        return attributes;
    }

    private static int constant(String name) {
        return sure(() -> FileAttributes.class.getField(name).getInt(null));
    }

    /** What the call comes to, as a scene writes it. */
    String outcome() {
        return stage.shown(sure(() -> {
            Object service = request.isPresent() ? request.get().service()
                    : method.getDeclaringClass().getConstructor().newInstance();
            try {
                Object result = method.invoke(service, arguments);
                return method.getReturnType() == void.class ? "done" : shown(result);
            } catch (InvocationTargetException thrown) {
                return shown(thrown.getCause());
            }
        }));
    }

    /** What the program that it ran was told, as a scene writes it after the outcome. */
    String told() {
        return request.map(Requested::told).orElse("");
    }

    /** What the last ServiceException said, without its line break. */
    static String message() {
        return message;
    }

    private static String shown(Throwable thrown) {
        if (!(thrown instanceof ServiceException exception)) {
            return "throws " + thrown;
        }
        String returned = Hooks.returned().toString();
        String beside = returned.isEmpty() ? "" : ", " + returned;
        message = String.valueOf(exception.getMessage()).replace("\r\n", "");
        String reason = exception.getMessage() == null ? "without a message"
                : "error " + Integer.toUnsignedLong(exception.getReason());
        return exception.getCode() + " " + reason + (exception.getSeverity() == 1 ? " severe" : "") + beside;
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
