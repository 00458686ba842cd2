#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# build.sh TARBALL WORK RESULTS [RPMBUILD-OPTION...]: builds the RPM packages and the source package of TARBALL in the
# directory WORK, checks them with rpmlint, and puts them into the directory RESULTS. scripts/package.sh makes TARBALL.
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
    # On a system without RPM packages, rpm does not know what is installed, so dependencies are not checked. There it also
    # cannot separate debug information, has no flags for hardening, and its script to compress manual pages needs another
    # shell.
    options+=(--nodeps --define "debug_package %{nil}" --define "_build_id_links none"
        --define "optflags -O2 -fstack-protector-strong -D_FORTIFY_SOURCE=2"
        --define "__os_install_post bash %{_rpmconfigdir}/brp-compress %{_prefix}; \
            strip --strip-unneeded %{buildroot}%{_bindir}/* %{buildroot}%{_libexecdir}/sorrel/* %{buildroot}%{_libdir}/*.so.%{version} \
            %{buildroot}%{_libdir}/qt5/plugins/kf5/*/*.so")
fi
rpmbuild -ba "${options[@]}" "$@" "$work/SPECS/sorrel.spec" > "$work/build.log" 2>&1 || fail
rpmlint --config "$here/rpmlint.toml" "$here/sorrel.spec" "$work"/SRPMS/*.rpm "$work"/RPMS/*/*.rpm
cp "$work"/SRPMS/*.rpm "$work"/RPMS/*/*.rpm "$results"
