// SPDX-License-Identifier: GPL-3.0-or-later
// Holds nothing: the header that all unit tests share is compiled with it.
