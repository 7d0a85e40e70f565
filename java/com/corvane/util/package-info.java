/**
 * What describes a file on every system: {@link com.corvane.util.FileAttributes}.
 */
package com.corvane.util;
