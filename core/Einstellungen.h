#pragma once
// The settings file Einstellungen.ko2: 101 numbers, 11 amounts, 61 texts, one a line.
#include "core/Variablen.h"

namespace koben {

/// Sets the values of a new installation.
void Einstellungen_vorgeben(Variablen& v, int currentYear);
/// Reads the file. Stops quietly where it is damaged or short; what was read so far stays.
void Einstellungen_laden(Variablen& v);
/// The same from the bytes of a file; values that they do not name stay.
void Einstellungen_uebernehmen(const QByteArray& bytes, Variablen& v);
/// The first line (from 1) that no version of the program writes so: a number or amount that is none, a character that
/// no text has, or an end within a line. 0 where there is none; a short file that ends with a whole line is an older
/// one.
int Einstellungen_schadhafte_Zeile(const QByteArray& bytes);
/// Writes the file anew, whole or not at all. "" or the reason (German) why the old one was kept.
QString Einstellungen_sichern(const Variablen& v);
/// Removes what a program that was killed while it wrote the file has left of its draft.
void Einstellungen_aufraeumen(const Variablen& v);

/// Text of the program's files: Windows-1252 with CR LF. Characters outside become "?".
QByteArray nachWindows1252(const QString& text);
QString ausWindows1252(const QByteArray& bytes);
/// Writes a text file, whole or not at all; false where it could not be written.
bool Textdatei_schreiben(const QString& path, const QString& text);

}  // namespace koben
