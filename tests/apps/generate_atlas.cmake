# SPDX-License-Identifier: LGPL-2.1-or-later
#
# Writes the many values of the "atlas" application: cmake -D RES_DIR=<res directory> -P generate_atlas.cmake
#
# The values cover every kind that a table supports, simple values and bags (styles, arrays, plurals). They are in the
# default configuration and in some others. In the others about every third entry has a value, so their tables have
# gaps.

set(strings 240)
set(others 60)
set(locales en-rUS en-rGB de de-rAT fr fr-rCA pt-rBR pt-rPT zh-rCN zh-rTW ja ar ru)

function(write_values qualifiers lines)
    set(directory "${RES_DIR}/values${qualifiers}")
    file(MAKE_DIRECTORY "${directory}")
    string(JOIN "\n    " body ${lines})
    file(WRITE "${directory}/generated.xml"
        "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<resources>\n    ${body}\n</resources>\n")
endfunction()

# numbered(OUT N): N with leading zeros.
function(numbered out number)
    string(LENGTH "${number}" length)
    if(length EQUAL 1)
        set(number "00${number}")
    elseif(length EQUAL 2)
        set(number "0${number}")
    endif()
    set(${out} "${number}" PARENT_SCOPE)
endfunction()

math(EXPR last_string "${strings} - 1")
math(EXPR last_other "${others} - 1")

string(REPEAT "Länder, Städte und Flüsse. " 40 essay)
set(lines "<string name=\"essay\">${essay}.</string>")
foreach(i RANGE ${last_string})
    numbered(n ${i})
    list(APPEND lines "<string name=\"place_${n}\">Place ${i} – Ort ${i} 🗺</string>")
endforeach()
foreach(i RANGE ${last_other})
    numbered(n ${i})
    math(EXPR odd "${i} % 2")
    if(odd)
        list(APPEND lines "<bool name=\"flag_${n}\">true</bool>")
    else()
        list(APPEND lines "<bool name=\"flag_${n}\">false</bool>")
    endif()
    math(EXPR integer "${i} * 7919 - 100000")
    math(EXPR hexadecimal "${i} * 74565 + 3735928559" OUTPUT_FORMAT HEXADECIMAL)
    math(EXPR two_digits "${i} % 90 + 10")
    list(APPEND lines
        "<integer name=\"count_${n}\">${integer}</integer>"
        "<integer name=\"mask_${n}\">${hexadecimal}</integer>"
        "<color name=\"color_${n}\">#${two_digits}a0c0</color>"
        "<color name=\"shade_${n}\">#${two_digits}1020f0</color>"
        "<color name=\"short_${n}\">#${two_digits}f</color>"
        "<color name=\"short_shade_${n}\">#8${two_digits}f</color>"
        "<color name=\"same_color_${n}\">@color/color_${n}</color>"
        "<dimen name=\"width_${n}\">${i}.5dp</dimen>"
        "<dimen name=\"height_${n}\">-${i}px</dimen>"
        "<item name=\"share_${n}\" type=\"fraction\">${i}%</item>"
        "<item name=\"scale_${n}\" format=\"float\" type=\"dimen\">${i}.25</item>"
        "<item name=\"view_${n}\" type=\"id\" />"
        "<string-array name=\"array_${n}\"><item>One ${i}</item><item>@string/place_${n}</item></string-array>"
        "<plurals name=\"plural_${n}\"><item quantity=\"one\">%d place</item><item quantity=\"other\">%d places \
${i}</item></plurals>"
        "<style name=\"Style_${n}\" parent=\"@android:style/Theme\"><item name=\"android:textColor\">@color/color_${n}\
</item><item name=\"zoom\">${i}.5</item></style>")
endforeach()
write_values("" "${lines}")

set(step 0)
foreach(locale IN LISTS locales)
    math(EXPR step "${step} % 4 + 1")
    set(lines "")
    foreach(i RANGE 0 ${last_string} ${step})
        numbered(n ${i})
        list(APPEND lines "<string name=\"place_${n}\">${locale} ${i}</string>")
    endforeach()
    foreach(i RANGE 0 ${last_other} 5)
        numbered(n ${i})
        list(APPEND lines
            "<string-array name=\"array_${n}\"><item>${locale} ${i}</item></string-array>"
            "<plurals name=\"plural_${n}\"><item quantity=\"other\">${locale} %d</item></plurals>")
    endforeach()
    write_values("-${locale}" "${lines}")
endforeach()

set(step 2)
foreach(qualifiers -mcc310-mnc4 -de-land -ldrtl -sw600dp -w820dp-h480dp -large-long -port -car -television-night -night
        -hdpi -xxxhdpi -nodpi -finger-keyssoft-qwerty-navhidden-wheel -1280x720 -v24)
    math(EXPR step "${step} % 6 + 1")
    set(lines "")
    foreach(i RANGE 0 ${last_other} ${step})
        numbered(n ${i})
        math(EXPR integer "${i} * 13 + ${step}")
        list(APPEND lines
            "<bool name=\"flag_${n}\">true</bool>"
            "<integer name=\"count_${n}\">${integer}</integer>"
            "<color name=\"shade_${n}\">#7f0000${step}0</color>"
            "<dimen name=\"width_${n}\">${integer}sp</dimen>"
            "<style name=\"Style_${n}\" parent=\"@android:style/Theme\"><item name=\"zoom\">${integer}</item></style>")
    endforeach()
    write_values("${qualifiers}" "${lines}")
endforeach()
