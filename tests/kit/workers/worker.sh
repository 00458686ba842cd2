# SPDX-License-Identifier: LGPL-2.1-or-later
# A worker for tst_workerpool. Its paths are orders; it reports any other path as a good package. LARGE is the size of
# the large text, HOLD a pipe to wait for.
while IFS= read -r -d '' path; do
    case $path in
    crash) kill -SEGV $$ ;;
    time) kill -ALRM $$ ;;
    memory) printf '102 {"path":"memory"}\n'; exit 1 ;;
    exit) exit 0 ;;
    close) exec >&-; exec sleep 1000 ;;
    text) printf 'no report\n' ;;
    'no code') printf '{"path":"no code"}\n' ;;
    'no object') printf '0 report\n' ;;
    'no end') printf '0 {"path":"no'; kill -KILL $$ ;;
    large) printf '0 {"path":"large","body":"'; head -c "$LARGE" /dev/zero | tr '\0' x; printf '"}\n' ;;
    long*) printf '0 {"path":"%s"}\n' "${#path}" ;;
    hold) read -r < "$HOLD"; printf '0 {"path":"hold"}\n' ;;
    *) printf '0 {"path":"%s"}\n' "$path" ;;
    esac
done
