<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en">
<context>
    <name>Cli::Text</name>
    <message>
        <source>no character device</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a character device that cannot be opened: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a terminal</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a character device, but no terminal</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>read and write</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>write</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>read</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>nothing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>may read and write</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>may neither read nor write</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>may only read</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>may only write</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>below %1 ms</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>later</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is a link to %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Device</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 leads to %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Permissions</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>owner %1: %2; group %3: %4; others: %5</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>; members of %1 may</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This user</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Held by</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>nobody else</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>nobody else that can be seen; programs of other users show to root only</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Answers</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>of %1 requests %2 proper, %3 refused, %4 damaged, %5 silent</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Line</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>broken: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Answer times</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>fastest %1, median %2, slowest %3</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Too late</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 later than %2 ms; a lost link does not return with them</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Mode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Function</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Function state</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Start test</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Error</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The serial device %1 is a link to %2, which does not exist. Plug the adapter in, or let the link lead to the line that there is.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is no serial line: it is %2. Let this name lead to the serial line that the instrument is wired to.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Let the administrator give the device a group that may read and write it, and join that.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Join the group %1 (sudo usermod -a -G %1 &quot;$USER&quot;) and log in again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No permission to read and write the serial device %1. %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The serial device %1 is held by %2, so nothing was sent: a measurement may be running. End that program, and run vesmar doctor again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The line broke while the instrument was asked: %1. Check the adapter and its plug, and run vesmar doctor again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 got a refusal, %2 a damaged answer and %3 none</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>None of %1 requests got a proper answer: %2. Check cable and power, and that the instrument is of the right kind.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The link is unreliable: of %1 requests, %2. Check cable, shield and plugs, and run vesmar doctor again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The link is too slow: %1 of %2 answers came later than %3 ms, and a lost link would not come back with those. Check whether the adapter or another load of this computer delays them, and switch the instrument off and on again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The link is sound, but the instrument is in the mode %1, in which it does not measure. Run vesmar restart.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>unknown</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Run vesmar stop, or switch the instrument off.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The link is sound, but the instrument reports %1. %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no terminal</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The link is sound, and the instrument is in its normal mode and reports no error. There is nothing to be done.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>cannot write the output: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Waiting for the instrument to answer, %1 s at the most. Ctrl-C ends it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a date and time from 2001-01-01T00:00:00 to 2099-12-31T23:59:59, nor now</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a date from 2001-01-01 to 2099-12-31</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The serial device %1 does not exist. Check that the board&apos;s serial line has this name, or try it without an instrument: vesmar-simulator run -- vesmar info</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The instrument refuses every request. Switch it off and on again, and check that it is of the right kind.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The instrument&apos;s answers arrive damaged. Check the cable and its shield, and that no other program uses the line.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The instrument answers, but does not leave its mode %1. Switch it off and on again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The instrument answered, but fell silent. Check cable and power, and start again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The instrument answers, but its clocks could not be read within %1. Check the cable, and give it more time with --timeout.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The instrument gave no proper answer within %1: it refuses, answers damaged or falls silent. Check cable and power; --timeout 30 finds out which.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The instrument did not answer within %1. Check that it is switched on and the cable is plugged in, or try it without an instrument: vesmar-simulator run -- vesmar info</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The instrument is in update mode (%1) and waits for firmware; run vesmar update IMAGE --confirmation FILE.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The link to it was lost; check cable and power, and try again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is active at the instrument, %2, and no program attends it: a dangerous voltage may be present. Keep away from the appliance.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is active at the instrument, %2, and no program attends it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>It is told to stop; vesmar stop proves that it has.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is not active any more.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1; a dangerous voltage is present while it runs</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1, a single measurement</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>; required</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source> (default %1)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>, or &quot;%1&quot;: until Ctrl-C</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not allowed. </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 gives a single result; only continuous functions have readings to write to a file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Link lost, the state of the instrument is unknown: it may still be running, and high voltage may be on. Switch it off at the instrument.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Link lost, or the measurement refused by the instrument, while preparing.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Link lost in the middle of the measurement.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>It is back, and the instrument is confirmed to have stopped.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Measurement %1 failed: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Measurement %1 failed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Measurement %1 done, but for %2 s there was no reading.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Measurement %1 done.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Measurement %1 aborted.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The instrument is confirmed to have stopped.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>STOP NOT CONFIRMED: the instrument may still be running, and high voltage may be on. Switch it off at the instrument.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>DANGEROUS VOLTAGE</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source> of %1 s</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no reading for %1 s</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>waiting until another function has stopped</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>preparing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>checking the object under test</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>waiting for a suitable mains voltage</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>starting</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>running</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>stopping</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>cleaning up</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>waiting until the instrument has stopped</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no reading</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>for %1 s, after %2 s</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1; waiting until it does. Ctrl-C aborts the measurement.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Link lost, the state of the instrument is unknown; trying to get it back and to stop the measurement.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>signal %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>nobody reads the output</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The measurement is being ended already (%1); waiting until the instrument is confirmed to have stopped.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Aborting the measurement (%1); waiting until the instrument is confirmed to have stopped.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Aborted before the measurement began.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Nothing was measured.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A DANGEROUS VOLTAGE is present from the start of the measurement until the instrument is confirmed to have stopped. Touch neither the appliance nor the probes.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Not every reading was kept: %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>not a regular file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>cannot write the file %1: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ended by signal %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is not a regular file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>cannot read %1: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 has %2 bytes, which is too much; check that it is the right file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the image %1 is empty; check that it is the right file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the image %1 has %2 bytes, which is not a multiple of %3; check that it is the right file and complete</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the confirmation %1 has fewer than %2 bytes; check that it is the right file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the image %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the confirmation %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 of %2 sectors</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 s left</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Firmware update done. The instrument is back in its normal mode.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Firmware update failed: the instrument did not change to update mode in time. Nothing was sent; run the same command again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Firmware update failed: all sectors and the confirmation were accepted, but the instrument stays in update mode; run the same command again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The firmware was sent and confirmed, but the instrument has not come back in time. Check cable and power; vesmar info tells what became of it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Firmware update failed: the link was lost before the first sector was sent. Check cable and power, and run the same command again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>At least %1 of %2 sectors were confirmed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 of %2 sectors was confirmed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 of %2 sectors were confirmed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Firmware update failed: %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Nothing was sent, and the instrument keeps its firmware; run the same command again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No sector was sent. The instrument may be in update mode; check cable and power, and run the same command again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The instrument stays in update mode; run the same command again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ended by signal %1 after the firmware was sent and confirmed. Whether the instrument came back with it was not waited for; vesmar info tells.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ended by signal %1 before the first sector was sent: the instrument keeps its firmware. It may be in update mode; vesmar restart brings it back.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Signal %1 does not end this: an image that is cut short leaves the instrument without firmware. Sending it goes on.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Version before</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Changing the instrument to update mode.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Sending the firmware. Do not switch the instrument off.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The firmware is confirmed. Waiting for the instrument to come back.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Version after</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The instrument did not take the date %1: it was last calibrated at %2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Last calibrated</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The date of the last calibration is set.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The date of the last calibration was read.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The instrument is in calibration mode; waiting until it has left it (signal %1).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>none</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 s behind this computer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 s ahead of this computer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The instrument did not take the time %1: its clock shows %2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clock</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Difference</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The clock is set.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The clock was read.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Waiting for the answer to request %1 of %2. Ctrl-C ends it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Everything was read.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>It does not stop; run vesmar stop.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no function given</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no function: &quot;%1&quot;</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>; it is one of %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Monitored for the time given.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Monitored until signal %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The instrument has restarted; that took %1 s.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 has been stopped. The instrument confirms that nothing runs any more.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Nothing runs at the instrument, which it confirms.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Likely causes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Next step</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>what was asked for was done</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>bad usage, or a file that cannot be used; nothing was sent</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the link did not come up in time</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>not done: update mode, or the output cannot be written in full</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the instrument failed; a measurement has stopped</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a measurement was aborted, and has stopped</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a measurement may still be running: switch the instrument off</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the link was lost in the middle of it</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a measurement is done, but for a while no reading came</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>and a signal&apos;s number: ended by it; 141: nobody reads the output</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>yes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>cannot be read</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Device name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Device code</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Serial number</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Version</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Version code</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Revision code</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Build number</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>within %1 ms</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is a device; name a file, or - for the standard input</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is the log itself; give the recording a name of its own</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Recorded by vesmar decode from %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1, line %2: %3</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: %2 more lines are damaged</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: the reading was ended before an exchange with an instrument</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is empty; check that it is the right file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>, and no recording is written</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: lines that are not decoded because they are damaged: %2%3; get the whole log, or remove them</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 has no exchange with an instrument; check that it is a log of the library</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The log is decoded as far as it was read</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The log is decoded</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>, of all %1 links</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>, and %1 entries are recorded%2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>cannot write the file %1: not a regular file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>line %1 has more than %2 bytes in one frame, which a recording cannot have; cut it out of the log</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the log has more than a recording can have, %1 exchanges and %2 bytes; cut it into parts</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>there is no exchange to record</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Summary</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>exchanges</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>refused</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>damaged</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>without an answer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>cut short</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>sent unasked</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>links</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>longest</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>within %1 ms, line %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>error</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1, line %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>vesmar explain %1 tells what to do</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a time from %2 to %3 seconds, such as 90, 1.5min or 500ms</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Write every reading to this file as it comes; - for the standard output, and then for nothing else</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>cannot write the output</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1; %2 lists them</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1; did you mean %2?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>there is no option %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>there is no verb %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Asking the doctor, which may take a minute.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Connecting, which takes ten seconds without an answer.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is there already; name another file, or add --overwrite</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The report is in %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>FILE</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>LOG</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>OUT</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Options</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Positionals</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>REQUIRED</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Subcommands</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Write JSON, one object on each line</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show the library&apos;s own trace on the error output</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>How long the link may take to come up (default 10)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>vesmar %1 --help tells of its options and of everything else.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>How long the instrument may take to report it as done (default 30)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>TIME</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>NUMBER</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Usage: vesmar measure %1 [OPTIONS]</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>vesmar measure --help tells of the options that all functions have.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is required</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: 1 required %2 missing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The following argument was not expected: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Usage: vesmar VERB [OPTIONS]
       vesmar VERB --help
</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Exit status; VERB --help tells what it means there:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Example, without an instrument:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Drives a portable appliance tester on the serial line.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Print this help message and exit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Display program version information and exit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The same as behind the verb: write JSON</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>no verb given; vesmar --help lists them</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show or set the date of the last calibration</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Usage: vesmar calibration [OPTIONS]
       vesmar calibration set DATE [OPTIONS]
</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>
Shows the date of the last calibration. &quot;set&quot; sets it to DATE, as in 2026-11-21, in
the years 2001 to 2099. The instrument is restarted twice for it, by way of its
calibration mode, which takes a few seconds; a signal does not cut that short. It
succeeds only when the instrument itself has then reported that date.

JSON: see docs/events.md; events calibration and result.

Exit status: 0 shown, or set; 1 bad usage; 2 the link did not come up in time; 3 the
instrument is in update mode, or the output cannot be written; 4 the instrument does
not report the date set; 7 the link was lost before it did; 128 and the signal&apos;s
number where a signal came first.

Example, without an instrument:
  vesmar-simulator run -- vesmar calibration set 2026-11-21
</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Set the date</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>What to set it to</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show or set the instrument&apos;s clock</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Usage: vesmar clock [OPTIONS]
       vesmar clock set [DATETIME|now] [OPTIONS]
</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>
Shows the instrument&apos;s clock, and by how many seconds it is ahead of this computer&apos;s
or behind it. The instrument knows no time zone: both are what a clock on the wall
shows. &quot;set&quot; sets it to DATETIME, as in 2026-11-21T18:00:00 or with a blank, in the
years 2001 to 2099, or without one to this computer&apos;s; it succeeds only when the
instrument itself has then reported that time, running, to within 2 seconds.

JSON: see docs/events.md; events clock and result.

Exit status: 0 shown, or set; 1 bad usage; 2 the link did not come up in time; 3 the
instrument is in update mode, or the output cannot be written; 4 the instrument does
not report the time set; 7 the link was lost before it did; 128 and the signal&apos;s
number where a signal came first.

Example, without an instrument:
  vesmar-simulator run -- vesmar clock set 2026-11-21T18:00:00
</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Set the clock</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>What to set it to (default: now)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tell in words what a log of the library has kept</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Usage: vesmar decode FILE [--scenario OUT] [--json]
</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Reads a log of the library, of a field unit or of vesmar VERB --trace 2&gt; FILE; &quot;-&quot; is
the standard input. Tells each exchange with the instrument in words, what was wrong
with it and how long it took, and at the end what was found. Lines of others, their
beginnings of lines and colours do not matter. No instrument is needed. Ctrl-C ends the
reading of a log that still grows.

--scenario records the exchanges for vesmar-simulator --playback OUT.

JSON: see docs/events.md; events exchange, unasked, note and result.

Exit status: 0 decoded; 1 bad usage, a file that cannot be read or written, or a damaged
log: what is whole is told all the same, but not recorded; 3 the output cannot be
written.

Example:
  vesmar-simulator run -- vesmar info --trace 2&gt; log
  vesmar decode log
</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the standard input</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The log; - for the standard input</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Record the exchanges for vesmar-simulator --playback</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>a file needs a name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Find out what is wrong with the link</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Usage: vesmar doctor [--json]
</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Looks at the serial device, who may use it and who holds it, asks the instrument for
its status 50 times, shows how it answered and how long that took, and says what is
wrong and what to do. Where another program holds the device, nothing is sent.

JSON: see docs/events.md; events device, permissions, holders, answers, condition,
and result.

Exit status: 0 link and instrument are sound; 1 bad usage; 2 no link; 3 the link is
sound, but the instrument is in update mode or in another one that is not its normal
mode, or the output cannot be written; 4 the link is unreliable or too slow, or the
instrument reports an error; 6 a function is active that no program attends.

Example, without an instrument:
  vesmar-simulator run -- vesmar doctor
</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tell what an error means and what to do</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Usage: vesmar explain [CODE|NAME] [--json]
</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tells what has happened when ErrorCode is CODE (or has that NAME), what is likely to
have caused it, and the next step. Without one, lists every error. No instrument is
needed.

JSON: see docs/events.md; events explanation, one for each error, and result.

Exit status: 0 told; 1 bad usage, an unknown error included; 3 the output cannot be
written.

Examples:
  vesmar explain 303
  vesmar explain CommunicationRecovery
</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>What happened</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The error&apos;s number or name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>there is no error &quot;%1&quot;; vesmar explain lists them</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Everything was told.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show the instrument&apos;s identity and clocks</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Usage: vesmar info [--json] [--timeout TIME] [--trace]
</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Connects, waits until the identity and both clocks have been read, shows them with
the instrument&apos;s mode and error, and ends. A function that is active while no program
attends it is told on the error output, and told to stop.

JSON: see docs/events.md; events unattended, info and result.

Exit status: 0 shown; 1 bad usage; 2 the link did not come up in time; 3 the
instrument is in update mode, where its clocks cannot be read, or the output cannot
be written; 6 a function that no program attends does not stop.

Example, without an instrument:
  vesmar-simulator run -- vesmar info --json
</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Run a measurement, from its settings to its result</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Usage: vesmar measure FUNCTION [OPTIONS]
       vesmar measure FUNCTION --help
</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>
Connects, prepares and starts the function, watches it to its end, and waits until
the instrument is confirmed to have stopped. Readings are in the instrument&apos;s own
units; a dash is no value. --csv takes a regular file, and overwrites it.

While hv runs, a DANGEROUS VOLTAGE is present. When no reading comes for a second or
longer, the program says so while that lasts, and in the result.

Ctrl-C, SIGTERM, SIGHUP (a closed terminal) and an output that nobody reads any more
abort the measurement; the program ends once the instrument is confirmed to have
stopped. A second signal does not cut that short. Ctrl-Z and Ctrl-\ do nothing. If the
program is killed during hv, the program vesmar-guard stops the instrument.

JSON: see docs/events.md; events status, error, reading, gap and result.

Exit status:
  0  measured, and the instrument has stopped
  1  bad usage, or a file that cannot be written; nothing was sent
  2  the link did not come up in time
  3  the instrument is in update mode, vesmar-guard is missing, or not all of the output
     could be written
  4  the measurement failed (the error is told); the instrument has stopped
  5  aborted; the instrument has stopped
  6  the stop is not confirmed: the instrument may still be running, and high voltage
     may be on; switch it off at the instrument
  7  the link was lost; the message tells whether it came back and the instrument has
     stopped, or its state is unknown
  8  measured, and the instrument has stopped, but for a while no reading came
  128 and the signal&apos;s number where a signal came before the link was up

Example, without an instrument:
  vesmar-simulator run -- vesmar measure rpe --current 2 --method 1 --time 3
</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>How long preparing, and then starting, may take (default 10)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>How long stopping, or the way back of a lost link, may take (default 15)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show every change of every property as it happens</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Usage: vesmar monitor [--for TIME] [--json] [--timeout TIME] [--trace]
</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Connects, and shows each change with the time at which it was told, until Ctrl-C,
SIGTERM, SIGHUP or the time given. A loss of the link shows as ErrorCode 103 and,
if it lasts, 100, and the program goes on. Whenever the identity has been read, the
mode, the error and the calibration date are shown as they stand, changed or not. An
instrument in update mode is pointed out on the error output.
A function that is active while no program attends it is told there, too, and told to
stop. Readings are in the instrument&apos;s own units.

JSON: see docs/events.md; events unattended, change and result.

Exit status: 0 ended by a signal or after the time given; 1 bad usage; 2 the link
did not come up in time; 3 the output cannot be written; 128 and the signal&apos;s
number where a signal came before the link was up, 141 where the output&apos;s reader
went away.

Example, without an instrument, its plug pulled after 3 s and put back after 25 s:
  vesmar-simulator run --at 3:unplug --at 25:plug -- vesmar monitor --for 40
</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>End after so long, counted from the moment that the link is up</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Write one file for a report of a bug</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Usage: vesmar report [FILE] [--log LOG] [--overwrite] [--json]
</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Writes a text with the versions, with what vesmar doctor finds, with the instrument&apos;s
identity and with the latest trace, decoded. What cannot be found out, without an
instrument for example, stands in the file in so many words. The report is in English.

FILE is vesmar-report-DATE-TIME.txt unless it is given; - is the standard output. The
trace is the end of LOG, which is kept by a field unit or by vesmar VERB --trace 2&gt; LOG;
without --log, it is that of a connection that is made for it.

JSON: see docs/events.md; event result.

Exit status: 0 written; 1 bad usage, or a file that is there already or cannot be
written; 3 the output cannot be written.

Example, without an instrument:
  vesmar-simulator run -- vesmar report -
</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Where to write it; - for the standard output</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The log with the trace</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Overwrite the file if it is there already</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>the standard output is either JSON or the report; name a file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Restart the instrument into its normal mode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Usage: vesmar restart [OPTIONS]
</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Restarts the instrument, waits until its identity has been read anew and it is in its
normal mode, and says how long that took. It also brings back an instrument that was
left in update mode with its firmware still whole.

JSON: see docs/events.md; events restart and result.

Exit status: 0 restarted; 1 bad usage; 2 the link did not come up in time; 3 the
output cannot be written; 4 the instrument does not reach its normal mode in time; 7
the link was lost; 128 and the signal&apos;s number where a signal came first.

Example, without an instrument:
  vesmar-simulator run --restart-time 1500 -- vesmar restart
</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>End whatever runs at the instrument, and prove it</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Usage: vesmar stop [--json] [--timeout TIME] [--trace]
</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ends the function that is active at the instrument, whoever has started it, and waits
for the proof: the instrument itself reports that no function is active any more. It
begins as soon as the line is open, and gives the instrument 20 seconds. A program
that holds the line is named; end that program first.

JSON: see docs/events.md; events unattended, stop and result.

Exit status: 0 it is proved that nothing runs; 1 bad usage; 2 the link did not come up
in time, or another program holds the line, so that nothing is known; 3 the instrument
is in update mode, or the output cannot be written; 6, 7 it is not proved that nothing
runs (7: the link is lost): switch the instrument off; 128 and the signal&apos;s number
where a signal came first.

Example, without an instrument:
  vesmar-simulator run --at 0:&quot;function 9&quot; -- vesmar stop
</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Send the instrument new firmware</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Usage: vesmar update IMAGE --confirmation FILE [OPTIONS]
</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>
Checks both files before anything is sent: the image is a whole number of sectors of
512 bytes, the confirmation has 2 bytes or more. Then shows the instrument&apos;s version,
sends it the image in update mode, and waits until it is back in its normal mode with
the version that it now reports. An instrument that was left in update mode is taken
up there.

An image that is cut short leaves the instrument without firmware. So while it is sent,
Ctrl-C, SIGTERM and SIGHUP (a closed terminal) do nothing but get an answer, and Ctrl-Z
and Ctrl-\ do nothing at all. Do not switch the instrument off.

--offline sends the image without the library&apos;s machine behind it: for an instrument
that does not tell its version any more. It does not insist on the link before, and no
signal ends it once it has begun.

JSON: see docs/events.md; events status, error, progress and result.

Exit status:
  0  the instrument is back with its firmware
  1  bad usage, or a file that cannot be used; nothing was sent
  2  the link did not come up in time
  3  done, but not all of the output could be written
  4  the update failed (the error is told), or the instrument stays in update mode
  7  the link was lost before the first sector, or the instrument did not come back
  128 and the signal&apos;s number where a signal ended it before the first sector, or after
  the confirmation

Example, without an instrument:
  head -c 4096 /dev/urandom &gt; image; vesmar-simulator confirmation image &gt; confirmation
  vesmar-simulator run -- vesmar update image --confirmation confirmation
</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The firmware</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The file that confirms the firmware; its last two bytes are sent</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Send it without the library&apos;s machine behind it</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
