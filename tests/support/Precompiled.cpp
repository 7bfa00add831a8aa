// SPDX-License-Identifier: GPL-3.0-or-later
// Holds nothing: the header that all tests of a kind share is compiled with it.
