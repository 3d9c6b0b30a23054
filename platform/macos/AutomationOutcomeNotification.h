#pragma once

// The distributed notification that carries an AutomationOutcome from the app
// to the command; its object is the outcome's encoded line (a sandboxed
// sender may not attach a dictionary).
#define WAKELOFT_AUTOMATION_OUTCOME_NOTIFICATION @"com.wakeloft.app.automation-outcome"
