/**
 * How all that fails in Windows is told: {@link com.corvane.wizard.service.ServiceException}.
 */
package com.corvane.wizard.service;
