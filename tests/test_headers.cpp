// SPDX-License-Identifier: LGPL-2.1-or-later

// Precompiled headers belong to a program, and this is the program of the tests' headers.
int main()
{
    return 0;
}
