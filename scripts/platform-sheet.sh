#!/usr/bin/env bash
# SPDX-License-Identifier: LGPL-2.1-or-later
# platform-sheet.sh [FILE]: draws icons of the installed platform, Debian's package android-framework-res, into FILE;
# build/platform-icons.png by default. The name is red when a part of the drawable could not be drawn.

source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

file=${1:-$PWD/build/platform-icons.png}
framework=/usr/share/android-framework-res/framework-res.apk
drawables=(
    sym_def_app_icon ic_launcher_android ic_menu_add ic_menu_call ic_menu_camera ic_menu_delete ic_menu_edit
    ic_menu_mylocation ic_menu_search ic_menu_share
    ic_dialog_alert ic_dialog_email ic_dialog_info ic_dialog_map ic_dialog_time ic_lock_lock ic_media_play
    ic_btn_speak_now star_big_on emo_im_cool
    stat_sys_download stat_sys_upload stat_sys_battery stat_sys_warning stat_notify_chat ic_corp_badge
    ic_info_outline_24 ic_account_circle ic_bluetooth_share_icon presence_online
    btn_default btn_check progress_indeterminate_horizontal progress_horizontal spinner_background toast_frame
    dialog_holo_light_frame btn_radio btn_star_big_on menu_frame
)

require "${test_packages[@]}"
build release contact_sheet samples
QT_QPA_PLATFORM=offscreen build/release/bin/contact_sheet "$file" --framework "$framework" "${drawables[@]}"
echo "$file"
