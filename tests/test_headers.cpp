// SPDX-License-Identifier: LGPL-2.1-or-later

// Precompiled headers belong to a program; this is theirs.
int main()
{
    return 0;
}
