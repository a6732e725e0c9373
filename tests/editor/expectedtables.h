// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_TESTS_EDITOR_EXPECTEDTABLES_H
#define MIOLKA_TESTS_EDITOR_EXPECTEDTABLES_H

/// The rows that the option tables must have, written down a second time. Values of measured
/// values, factors, units and ranges are what the device computes with.
namespace expected {

constexpr char parCb1[] = R"(1 [Hz];150
2 [Hz];75
3 [Hz];50
4 [Hz];37
5 [Hz];30
10 [Hz];15)";

constexpr char parCb2[] = R"(5 [min];300
10 [min];600
30 [min];1800
1 [h];3600
2 [h];7200
5 [h];18000
12 [h];43200)";

constexpr char parCb3[] = R"(1 [s];5
2 [s];6
4 [s];7
8 [s];8)";

constexpr char parCb4[] = R"(Constant;0
Min;1
Avg;2
Current;3)";

constexpr char condition[] = R"(anytime;255
underwater;0
on the surface;1
at the beginning of dive;2
at the end of dive;3
during descent;4
on the bottom;5
during ascent;6
at the switch on;7
at the switch off;8
at the beginning of charging;9
during charging;10
at the end of charging;11
if stopwatch 0 is counting;16
if timer 1 is counting;17
if timer 2 is counting;18
if timer 3 is counting;19
if stopwatch 0 is stopped;24
if timer 1 is stopped;25
if timer 2 is stopped;26
if timer 3 is stopped;27
if timer 1 passed;33
if timer 2 passed;34
if timer 3 passed;35
never;254)";

constexpr char measuredValue[] = R"(Regardless of any value;255;1;;;
Absolute pressure;0;1;[mbar];0;32767
Absolute pressure min;1;1;[mbar];0;32767
Absolute pressure max;2;1;[mbar];0;32767
Absolute pressure avg;3;1;[mbar];0;32767
Absolute pressure MIN;4;1;[mbar];0;32767
Absolute pressure MAX;5;1;[mbar];0;32767
Atmospheric pressure;8;1;[mbar];0;32767
Atmospheric pressure min;9;1;[mbar];0;32767
Atmospheric pressure max;10;1;[mbar];0;32767
Atmospheric pressure avg;11;1;[mbar];0;32767
Atmospheric pressure MIN;12;1;[mbar];0;32767
Atmospheric pressure MAX;13;1;[mbar];0;32767
Temperature;16;10;[°C];-50;100
Temperature min;17;10;[°C];-50;100
Temperature max;18;10;[°C];-50;100
Temperature avg;19;10;[°C];-50;100
Temperature MIN;20;10;[°C];-50;100
Temperature MAX;21;10;[°C];-50;100
Battery level;31;327.68;[%];0;100.00
Depth;32;100;[m];0;327.67
Depth max;34;100;[m];0;327.67
Depth avg;35;100;[m];0;327.67
Depth MAX;37;100;[m];0;327.67
Dive time;40;1;[s];0;32767
Surface time;41;1;[s];0;32767
Descent time;42;1;[s];0;32767
Bottom time;43;1;[s];0;32767
Ascent time;44;1;[s];0;32767
Dive time MAX;45;1;[s];0;32767
Dive time Total;46;1;[s];0;32767
Vertical speed;48;100;[m/s];-327.68;327.67
Ascent speed max;49;100;[m/s];-327.68;327.67
Descent speed max;50;100;[m/s];-327.68;327.67
Ascent speed avg;51;100;[m/s];-327.68;327.67
Descent speed avg;52;100;[m/s];-327.68;327.67
Ascent speed MAX;53;100;[m/s];-327.68;327.67
Descent speed MAX;54;100;[m/s];-327.68;327.67
Stopwatch 0;56;1;[s];0;32767
Timer 1;57;1;[s];0;32767
Timer 2;58;1;[s];0;32767
Timer 3;59;1;[s];0;32767)";

constexpr char comparison[] = R"(>=;0
<=;1)";

constexpr char action[] = R"(Do nothing;127
Stopwatch 0 - START;128
Timer 1 - START;129
Timer 2 - START;130
Timer 3 - START;131
Stopwatch 0 - STOP;136
Timer 1 - STOP;137
Timer 2 - STOP;138
Timer 3 - STOP;139
Stopwatch 0 - Continue;144
Timer 1 - Continue;145
Timer 2 - Continue;146
Timer 3 - Continue;147)";

constexpr char messageAfterValues[] = R"(Battery charging started;192
Battery charging interrupted;193
Battery charging completed;194
Swim faster;209
Swim slower;210
Relax yourself;212
Prepare yourself;213
Focus;214
Attention;215
Bottom;216
Freefall;217
Mouthfill;218
Official top;224
Breathe!;226
Surface protocol;228
Remove mask;230
Remove goggles;231
Remove noseclip;232
Remove facial equipment;233
Show OK;234
Say I'm OK;235
Custom message 1;241
Custom message 2;242
Custom message 3;243
Custom message 4;244
Custom message 5;245
Custom message 6;246
Custom message 7;247
Custom message 8;248
Do nothing;127)";

constexpr char form[] = R"((value & point);0
(value & point & unit);1
(value);2
(value & unit);3
(caption & value & point);4
(caption & value & point & unit);5
(caption & value);6
(caption & value & unit);7)";

constexpr char repetition[] = R"(only once;0
every period A;1
every period B;2
every period C;3
every period D;4
every distance E;5
every distance F;6
every distance G;7
every distance H;8
still;255)";

} // namespace expected

#endif
