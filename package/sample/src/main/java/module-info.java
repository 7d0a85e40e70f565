/** Of no effect where the program is started from the class path. */
module sample {
    requires com.corvane.win32;
}
