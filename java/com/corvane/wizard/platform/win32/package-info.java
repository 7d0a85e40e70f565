/**
 * What an installer needs from Windows: the registry, files in use, shortcuts, programs, services, accounts.
 *
 * <p>The natives are in the classes {@code Win32...ServiceImpl} and {@code Win32ServiceImpl}, whose objects hold
 * nothing; {@link com.corvane.wizard.platform.win32.Win32Library} loads what is behind them, and
 * {@link com.corvane.wizard.platform.win32.Win32Cleaner} deletes files when the JVM has ended. Failures are
 * {@link com.corvane.wizard.service.ServiceException}s, if nothing else is said.
 */
package com.corvane.wizard.platform.win32;
