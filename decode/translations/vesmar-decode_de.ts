<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en">
<context>
    <name>Decode</name>
    <message>
        <source>%1... of %2 bytes</source>
        <translation>%1... von %2 Bytes</translation>
    </message>
    <message>
        <source>refused</source>
        <translation>abgelehnt</translation>
    </message>
    <message>
        <source>damaged checksum: %1</source>
        <translation>beschädigte Prüfsumme: %1</translation>
    </message>
    <message>
        <source>no answer</source>
        <translation>keine Antwort</translation>
    </message>
    <message>
        <source>no answer yet</source>
        <translation>noch keine Antwort</translation>
    </message>
    <message>
        <source>sent unasked</source>
        <translation>ungefragt gesendet</translation>
    </message>
    <message>
        <source>check of the object under test: %1</source>
        <translation>Kontrolle des Prüflings: %1</translation>
    </message>
    <message>
        <source>values of an unknown function: %1</source>
        <translation>Werte einer unbekannten Funktion: %1</translation>
    </message>
    <message>
        <source>%1 has %2 bytes, and not %3: the library does not take it</source>
        <translation>%1 hat %2 Bytes und nicht %3: Die Bibliothek nimmt es nicht an</translation>
    </message>
    <message>
        <source>a status</source>
        <translation>ein Status</translation>
    </message>
    <message>
        <source>a version</source>
        <translation>eine Version</translation>
    </message>
    <message>
        <source>a date</source>
        <translation>ein Datum</translation>
    </message>
    <message>
        <source>a measurement</source>
        <translation>eine Messung</translation>
    </message>
    <message>
        <source>ready for the image</source>
        <translation>bereit für das Abbild</translation>
    </message>
    <message>
        <source>%1 bytes of data</source>
        <translation>%1 Bytes Daten</translation>
    </message>
    <message>
        <source>acknowledged</source>
        <translation>quittiert</translation>
    </message>
    <message>
        <source>data is due: the library does not take an acknowledge</source>
        <translation>Daten sind fällig: Die Bibliothek nimmt keine Quittung an</translation>
    </message>
    <message>
        <source>an acknowledge is due: the library does not take data</source>
        <translation>eine Quittung ist fällig: Die Bibliothek nimmt keine Daten an</translation>
    </message>
    <message>
        <source>start test %1</source>
        <translation>Starttest %1</translation>
    </message>
    <message>
        <source>result of an RCD test that was prepared before the log: Re %1, or Ia %2 and Ta %3</source>
        <translation>Ergebnis einer FI-Prüfung, die vor dem Protokoll vorbereitet wurde: Re %1, oder Ia %2 und Ta %3</translation>
    </message>
    <message>
        <source>read status</source>
        <translation>Status lesen</translation>
    </message>
    <message>
        <source>read version</source>
        <translation>Version lesen</translation>
    </message>
    <message>
        <source>read current date</source>
        <translation>Uhr lesen</translation>
    </message>
    <message>
        <source>read calibration date</source>
        <translation>Kalibrierdatum lesen</translation>
    </message>
    <message>
        <source>read measurement</source>
        <translation>Messwerte lesen</translation>
    </message>
    <message>
        <source>start measurement</source>
        <translation>Messung starten</translation>
    </message>
    <message>
        <source>stop measurement</source>
        <translation>Messung stoppen</translation>
    </message>
    <message>
        <source>initialize update</source>
        <translation>Update beginnen</translation>
    </message>
    <message>
        <source>prepare measurement</source>
        <translation>Messung vorbereiten</translation>
    </message>
    <message>
        <source>change mode</source>
        <translation>Modus wechseln</translation>
    </message>
    <message>
        <source>set current date</source>
        <translation>Uhr stellen</translation>
    </message>
    <message>
        <source>set calibration date</source>
        <translation>Kalibrierdatum setzen</translation>
    </message>
    <message>
        <source>program flash sector</source>
        <translation>Sektor schreiben</translation>
    </message>
    <message>
        <source>finish update</source>
        <translation>Update abschließen</translation>
    </message>
    <message>
        <source>%1 bytes</source>
        <translation>%1 Bytes</translation>
    </message>
    <message>
        <source>confirmation %1</source>
        <translation>Bestätigung %1</translation>
    </message>
    <message>
        <source>unknown request</source>
        <translation>unbekannte Anfrage</translation>
    </message>
    <message>
        <source>there is no such request</source>
        <translation>diese Anfrage gibt es nicht</translation>
    </message>
    <message>
        <source>the request&apos;s checksum is wrong</source>
        <translation>die Prüfsumme der Anfrage ist falsch</translation>
    </message>
    <message>
        <source>the request&apos;s length is wrong</source>
        <translation>die Länge der Anfrage ist falsch</translation>
    </message>
    <message>
        <source>0 or 1 with method 1</source>
        <translation>0 oder 1 mit Verfahren 1</translation>
    </message>
    <message>
        <source>0 or 1</source>
        <translation>0 oder 1</translation>
    </message>
    <message>
        <source>0 with any current, or 1</source>
        <translation>0 mit jedem Strom, oder 1</translation>
    </message>
    <message>
        <source>of code %1</source>
        <translation>mit Code %1</translation>
    </message>
    <message>
        <source>%1 or %2</source>
        <translation>%1 oder %2</translation>
    </message>
    <message>
        <source>swapped, unless the type says it</source>
        <translation>vertauscht, sofern es nicht der Typ sagt</translation>
    </message>
    <message>
        <source>there is no function %1</source>
        <translation>es gibt keine Funktion %1</translation>
    </message>
    <message>
        <source>set</source>
        <translation>gesetzt</translation>
    </message>
    <message>
        <source>none</source>
        <translation>keine</translation>
    </message>
    <message>
        <source>device name</source>
        <translation>Gerätename</translation>
    </message>
    <message>
        <source>device code</source>
        <translation>Gerätecode</translation>
    </message>
    <message>
        <source>serial number</source>
        <translation>Seriennummer</translation>
    </message>
    <message>
        <source>version</source>
        <translation>Version</translation>
    </message>
    <message>
        <source>version code</source>
        <translation>Versionscode</translation>
    </message>
    <message>
        <source>revision code</source>
        <translation>Revisionscode</translation>
    </message>
    <message>
        <source>build number</source>
        <translation>Buildnummer</translation>
    </message>
    <message>
        <source>no valid date</source>
        <translation>kein gültiges Datum</translation>
    </message>
    <message>
        <source>cut short by the closing of the link, not a silence</source>
        <translation>durch das Schließen der Verbindung abgeschnitten, kein Schweigen</translation>
    </message>
    <message>
        <source>too quick for a silence: the line itself failed</source>
        <translation>zu schnell für ein Schweigen: Die Leitung selbst versagte</translation>
    </message>
    <message>
        <source>too quick for a silence: the line itself failed, or the link was closed</source>
        <translation>zu schnell für ein Schweigen: Die Leitung selbst versagte, oder die Verbindung wurde geschlossen</translation>
    </message>
    <message>
        <source>nothing</source>
        <translation>nichts</translation>
    </message>
    <message>
        <source>the log says %1 where the bytes mean %2</source>
        <translation>das Protokoll sagt %1, wo die Bytes %2 bedeuten</translation>
    </message>
    <message>
        <source>of an unknown number</source>
        <translation>unbekannter Nummer</translation>
    </message>
    <message>
        <source>no whole frame yet, or a damaged one; bytes so far: %1</source>
        <translation>noch kein ganzes Telegramm oder ein beschädigtes; Bytes bisher: %1</translation>
    </message>
    <message>
        <source>the exchange is damaged: %1</source>
        <translation>der Austausch ist beschädigt: %1</translation>
    </message>
    <message>
        <source>a hexadecimal digit is missing or too many</source>
        <translation>eine Hexadezimalziffer fehlt oder ist zu viel</translation>
    </message>
    <message>
        <source>the answer has %1 bytes, and [%2b] stands behind it</source>
        <translation>die Antwort hat %1 Bytes, aber dahinter steht [%2b]</translation>
    </message>
    <message>
        <source>&quot;%1&quot; stands behind it</source>
        <translation>dahinter steht „%1“</translation>
    </message>
    <message>
        <source>there is no such time of day</source>
        <translation>diese Uhrzeit gibt es nicht</translation>
    </message>
    <message>
        <source>what was received unasked is damaged: these are no whole bytes</source>
        <translation>was ungefragt empfangen wurde, ist beschädigt: Das sind keine ganzen Bytes</translation>
    </message>
    <message>
        <source>the exchange is damaged: its end is missing</source>
        <translation>der Austausch ist beschädigt: Sein Ende fehlt</translation>
    </message>
    <message>
        <source>attempt %1 of %2: %3</source>
        <translation>Versuch %1 von %2: %3</translation>
    </message>
    <message>
        <source>attempt %1: %2</source>
        <translation>Versuch %1: %2</translation>
    </message>
    <message>
        <source>%1; or, in an RCD test, %2</source>
        <translation>%1; oder, in einer FI-Prüfung, %2</translation>
    </message>
    <message>
        <source>new reading</source>
        <translation>neuer Messwert</translation>
    </message>
    <message>
        <source>the line has more than %1 bytes; check that this is a log of the library</source>
        <translation>die Zeile hat mehr als %1 Bytes; prüfen Sie, ob dies ein Protokoll der Bibliothek ist</translation>
    </message>
    <message>
        <source>there are bytes that are no text; check that this is a log of the library</source>
        <translation>es sind Bytes darin, die kein Text sind; prüfen Sie, ob dies ein Protokoll der Bibliothek ist</translation>
    </message>
    <message>
        <source>the line has no end; get the rest of the log</source>
        <translation>die Zeile hat kein Ende; besorgen Sie den Rest des Protokolls</translation>
    </message>
    <message>
        <source>sector %1, %2</source>
        <translation>Sektor %1, %2</translation>
    </message>
    <message>
        <source>cannot write the file %1: not a regular file</source>
        <translation>Die Datei %1 kann nicht geschrieben werden: keine gewöhnliche Datei</translation>
    </message>
    <message>
        <source>cannot write the file %1: %2</source>
        <translation>Die Datei %1 kann nicht geschrieben werden: %2</translation>
    </message>
    <message>
        <source>line %1 has more than %2 bytes in one frame, which a recording cannot have; cut it out of the log</source>
        <translation>Zeile %1 hat mehr als %2 Bytes in einem Telegramm, was eine Aufzeichnung nicht haben kann; schneiden Sie sie aus dem Protokoll heraus</translation>
    </message>
    <message>
        <source>the log has more than a recording can have, %1 exchanges and %2 bytes; cut it into parts</source>
        <translation>das Protokoll hat mehr, als eine Aufzeichnung haben kann, %1 Austausche und %2 Bytes; zerteilen Sie es</translation>
    </message>
    <message>
        <source>there is no exchange to record</source>
        <translation>es gibt keinen Austausch, der aufgezeichnet werden könnte</translation>
    </message>
</context>
</TS>
