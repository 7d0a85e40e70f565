# Locales in the cache: each gives Wine an ANSI code page.

locale_path="$cache/locale"

# Under it Wine's ANSI code page is 932.
need_japanese_locale() {
  [ -f "$locale_path/ja_JP.UTF-8/LC_CTYPE" ] || step "Compiling the Japanese locale" make_locale
}

make_locale() {
  mkdir -p "$locale_path"
  localedef -i ja_JP -f UTF-8 "$locale_path/ja_JP.UTF-8"
}

# use_utf8_code_page: the system's tools print in the code page. In this language it is UTF-8, and they
# speak English. Wine needs no such locale for that, but without one it makes no file whose name is not
# ASCII; the one that every Debian has serves under its name.
use_utf8_code_page() {
  mkdir -p "$locale_path"
  ln -sfn /usr/lib/locale/C.utf8 "$locale_path/mi_NZ.UTF-8"
  export WINE_LOCALE=mi_NZ.UTF-8 WINE_LOCPATH="$locale_path"
}
