/**
 * Environment variables, of the process and stored ones:
 * {@link com.corvane.wizard.platform.win32.environment.WindowsEnvironment}.
 */
package com.corvane.wizard.platform.win32.environment;
