/**
 * What services are made of and what they tell, as
 * {@link com.corvane.wizard.platform.win32.Win32ServiceImpl} takes and gives it.
 */
package com.corvane.wizard.platform.win32.win32service;
