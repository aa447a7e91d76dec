#pragma once

// Text fields whose text has no letters (numbers, signs, the keypad's
// expression line) take their writing direction from the keyboard's
// language, which Qt takes from the system locale's language. Under a
// Hebrew or Arabic locale a field then lays "-1000.5" out as "1000.5-" and
// "1234.5*210-3" as "210-3*1234.5", although every text of the app is
// English and reads left to right.
//
// So the app has Qt read the system locale once with English as its
// language: numbers, dates, money and measures still come from the user's
// locale categories, only the language (and with it the keyboard's
// direction) is the app's own. The environment is put back at once, so
// programs the app starts (the mail client, the browser) see the user's.
namespace InputDirection {

// When the user's language (LC_ALL, else LC_MESSAGES, else LANG, and
// LANGUAGE's first choice) writes right to left, reads the system locale
// with English messages and every other category as the user has it, then
// restores the environment. Call before the application object exists.
void useLeftToRight();

} // namespace InputDirection
