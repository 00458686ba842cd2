#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# build.sh TARBALL WORK RESULTS [RPMBUILD-OPTION...]: builds the source package and the packages for RPM of TARBALL,
# the original sources that scripts/package.sh makes, in the directory WORK, looks at them with rpmlint, and puts them
# into the directory RESULTS.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
tarball=$1 work=$2 results=$3
shift 3

fail() {
    cat "$work/build.log" >&2
    echo "build.sh: the packages for RPM cannot be built" >&2
    exit 1
}

mkdir -p "$work"/{BUILD,BUILDROOT,RPMS,SOURCES,SPECS,SRPMS}
cp "$tarball" "$work/SOURCES"
cp "$here/sorrel.spec" "$work/SPECS"
options=(--define "_topdir $work" --define "_smp_mflags -j$(nproc)")
if ! rpm -q rpm >/dev/null 2>&1; then
    # Where rpm is not the system's own, it does not know what is installed, so that it is not asked; it brings nothing
    # to keep debug information apart by, has no flags for hardening, and its script to compress pages takes another
    # shell.
    options+=(--nodeps --define "debug_package %{nil}" --define "_build_id_links none"
        --define "optflags -O2 -fstack-protector-strong -D_FORTIFY_SOURCE=2"
        --define "__os_install_post bash %{_rpmconfigdir}/brp-compress %{_prefix}; \
            strip --strip-unneeded %{buildroot}%{_bindir}/* %{buildroot}%{_libdir}/*.so.%{version}")
fi
rpmbuild -ba "${options[@]}" "$@" "$work/SPECS/sorrel.spec" > "$work/build.log" 2>&1 || fail
rpmlint --config "$here/rpmlint.toml" "$here/sorrel.spec" "$work"/SRPMS/*.rpm "$work"/RPMS/*/*.rpm
cp "$work"/SRPMS/*.rpm "$work"/RPMS/*/*.rpm "$results"
