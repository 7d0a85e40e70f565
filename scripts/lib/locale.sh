# A Japanese locale in the cache: under it Wine's ANSI code page is 932.

locale_path="$cache/locale"

need_japanese_locale() {
  [ -f "$locale_path/ja_JP.UTF-8/LC_CTYPE" ] || step "Compiling the Japanese locale" make_locale
}

make_locale() {
  mkdir -p "$locale_path"
  localedef -i ja_JP -f UTF-8 "$locale_path/ja_JP.UTF-8"
}
