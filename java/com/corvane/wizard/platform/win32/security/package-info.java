/**
 * Rights of accounts:
 * {@link com.corvane.wizard.platform.win32.security.WindowsAccountPrivilegeServiceImpl}.
 */
package com.corvane.wizard.platform.win32.security;
