// SPDX-License-Identifier: Apache-2.0
#pragma once

/// What 'plexo play --help' says behind the options.
inline constexpr const char* kPlayNotes =
    "A script has a line for each thing that the learner asks for, that the content reports, or that you\n"
    "expect. It is read from standard input without SCRIPT.\n"
    "  start | continue | previous | choice ID | jump ID | exit | exitall | abandon | abandonall\n"
    "  suspendall | resumeall\n"
    "  status completed|incomplete|unknown      success passed|failed|unknown\n"
    "  score 0.8     progress 0.5     objective ID passed|failed|unknown [SCORE]     suspend\n"
    "  expect deliver ID|end|none               expect completed|satisfied|attempted ID true|false|unknown\n"
    "  expect measure ID NUMBER|unknown         expect can|cannot continue|previous|choice ID\n"
    "  toc | tree | globals | why ID            save FILE | load FILE | help | quit\n"
    "ID is an item's identifier; '#' begins a comment.\n"
    "\n"
    "Exit status:\n"
    "  0  done, and every expectation holds\n"
    "  1  the package can't be played, or a saved learner was refused\n"
    "  2  the command line or the script is wrong, or there is no such file\n"
    "  3  an expectation failed, or the machine did: disk full, no permission\n";
