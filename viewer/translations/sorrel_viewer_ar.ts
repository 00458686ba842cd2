<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ar" sourcelanguage="en">
<context>
    <name>Viewer::BrokenPage</name>
    <message>
        <source>&amp;Read again</source>
        <translation>&amp;إعادة القراءة</translation>
    </message>
    <message>
        <source>Reads the file from its start.</source>
        <translation>يقرأ الملف من بدايته.</translation>
    </message>
    <message>
        <source>What is known in spite of it:</source>
        <translation>ما هو معروف رغم ذلك:</translation>
    </message>
    <message>
        <source>Problem</source>
        <translation>مشكلة</translation>
    </message>
    <message>
        <source>This package is broken</source>
        <translation>هذه الحزمة تالفة</translation>
    </message>
    <message>
        <source>Reading this package ended early</source>
        <translation>انتهت قراءة هذه الحزمة قبل أوانها</translation>
    </message>
    <message>
        <source>File:</source>
        <translation>الملف:</translation>
    </message>
    <message>
        <source>Size:</source>
        <translation>الحجم:</translation>
    </message>
    <message>
        <source>Label:</source>
        <translation>التسمية:</translation>
    </message>
    <message>
        <source>Name:</source>
        <translation>الاسم:</translation>
    </message>
    <message>
        <source>Version:</source>
        <translation>الإصدار:</translation>
    </message>
    <message>
        <source>Signature:</source>
        <translation>التوقيع:</translation>
    </message>
</context>
<context>
    <name>Viewer::CardModel</name>
    <message numerus="yes">
        <source>and %n more</source>
        <translation>
            <numerusform>ولا شيء غيرها</numerusform><numerusform>وواحد غيرها</numerusform><numerusform>واثنان غيرها</numerusform><numerusform>و%n غيرها</numerusform><numerusform>و%n غيرها</numerusform><numerusform>و%n غيرها</numerusform></translation>
    </message>
    <message>
        <source>%1: %2</source>
        <comment>badge and title</comment>
        <translation>%1: %2</translation>
    </message>
</context>
<context>
    <name>Viewer::CommandDialog</name>
    <message>
        <source>Install Command</source>
        <translation>أمر التثبيت</translation>
    </message>
    <message>
        <source>&amp;Command that installs a package; %f is the file:</source>
        <translation>الأ&amp;مر الذي يثبّت حزمة؛ ‎%f هو الملف:</translation>
    </message>
    <message>
        <source>The command runs only after you agree to it for a package. No shell is involved. Arguments with spaces are in double quotes. Leave the line empty for no command.</source>
        <translation>لا يُنفَّذ الأمر إلا بعد موافقتك عليه لحزمة ما. لا تُستخدم أي صدفة أوامر. الوسائط التي فيها مسافات توضع بين علامتي اقتباس مزدوجتين. اترك السطر فارغًا إن لم ترد أمرًا.</translation>
    </message>
    <message>
        <source>Install command</source>
        <translation>أمر التثبيت</translation>
    </message>
</context>
<context>
    <name>Viewer::Comparison</name>
    <message>
        <source>Reading %1…</source>
        <translation>تجري قراءة %1…</translation>
    </message>
    <message>
        <source>Compare or Open?</source>
        <translation>مقارنة أم فتح؟</translation>
    </message>
    <message>
        <source>%1 is another file of the same package. Compare the two?</source>
        <translation>%1 ملف آخر للحزمة نفسها. هل تريد المقارنة بينهما؟</translation>
    </message>
    <message>
        <source>%1 is another package. Open it instead of this one?</source>
        <translation>%1 حزمة أخرى. هل تريد فتحها بدلًا من هذه؟</translation>
    </message>
    <message>
        <source>&amp;Compare</source>
        <translation>م&amp;قارنة</translation>
    </message>
    <message>
        <source>&amp;Open Instead</source>
        <translation>&amp;فتح بدلًا منها</translation>
    </message>
</context>
<context>
    <name>Viewer::ComparisonPage</name>
    <message>
        <source>Comparison</source>
        <translation>مقارنة</translation>
    </message>
    <message>
        <source>Some parts were not compared, because a package exceeds a limit.</source>
        <translation>لم تُقارَن بعض الأجزاء لأن إحدى الحزمتين تتجاوز حدًّا.</translation>
    </message>
    <message>
        <source>The other package cannot be read: %1</source>
        <translation>تتعذّر قراءة الحزمة الأخرى: %1</translation>
    </message>
    <message>
        <source>Changes from this package to %1, version %2</source>
        <translation>التغييرات من هذه الحزمة إلى %1، الإصدار %2</translation>
    </message>
</context>
<context>
    <name>Viewer::ContentsPage</name>
    <message>
        <source>Show the folder above (Backspace)</source>
        <translation>عرض المجلد الأعلى (Backspace)</translation>
    </message>
    <message>
        <source>Show the folder above</source>
        <translation>عرض المجلد الأعلى</translation>
    </message>
    <message>
        <source>Members of the package</source>
        <translation>محتويات الحزمة</translation>
    </message>
    <message>
        <source>Contents</source>
        <translation>المحتوى</translation>
    </message>
    <message>
        <source>Members that are not shown: %1</source>
        <translation>ملفات غير معروضة: %1</translation>
    </message>
    <message>
        <source>This package has no members.</source>
        <translation>ليس في هذه الحزمة ملفات.</translation>
    </message>
    <message>
        <source>The package</source>
        <translation>الحزمة</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <comment>member and facts</comment>
        <translation>%1: %2</translation>
    </message>
</context>
<context>
    <name>Viewer::CopyAction</name>
    <message>
        <source>Copy</source>
        <translation>نسخ</translation>
    </message>
</context>
<context>
    <name>Viewer::DiffCards</name>
    <message>
        <source>Features</source>
        <translation>الميزات</translation>
    </message>
    <message>
        <source>Launchers</source>
        <translation>المُشغِّلات</translation>
    </message>
    <message>
        <source>Names of the application</source>
        <translation>أسماء التطبيق</translation>
    </message>
    <message>
        <source>All other languages</source>
        <translation>كل اللغات الأخرى</translation>
    </message>
    <message>
        <source>Native code for</source>
        <translation>شيفرة أصلية لـ</translation>
    </message>
    <message>
        <source>Splits</source>
        <translation>الأجزاء</translation>
    </message>
    <message>
        <source>Signature schemes</source>
        <translation>مخططات التوقيع</translation>
    </message>
    <message>
        <source>Signer</source>
        <translation>الموقِّع</translation>
    </message>
    <message>
        <source>Signed by someone else: Android refuses this update</source>
        <translation>موقَّعة من شخص آخر: يرفض أندرويد هذا التحديث</translation>
    </message>
    <message>
        <source>The signer is the same</source>
        <translation>الموقِّع نفسه</translation>
    </message>
    <message>
        <source>The signer is the same, with a new key</source>
        <translation>الموقِّع نفسه بمفتاح جديد</translation>
    </message>
    <message>
        <source>The signer is the same, with an earlier key</source>
        <translation>الموقِّع نفسه بمفتاح سابق</translation>
    </message>
    <message>
        <source>The signers cannot be compared: the old package is not verified</source>
        <translation>تتعذّر مقارنة الموقِّعين: الحزمة القديمة غير موثَّقة</translation>
    </message>
    <message>
        <source>Not verified: Android refuses the new package</source>
        <translation>غير موثَّقة: يرفض أندرويد الحزمة الجديدة</translation>
    </message>
    <message>
        <source>Another application: Android installs it beside the other one</source>
        <translation>تطبيق آخر: يثبّته أندرويد إلى جانب الأول</translation>
    </message>
    <message>
        <source>An older version: Android refuses this update</source>
        <translation>إصدار أقدم: يرفض أندرويد هذا التحديث</translation>
    </message>
    <message>
        <source>The packages do not differ</source>
        <translation>لا فرق بين الحزمتين</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>تحذير</translation>
    </message>
    <message>
        <source>Application</source>
        <translation>التطبيق</translation>
    </message>
    <message>
        <source>Package</source>
        <translation>حزمة</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>الإصدار</translation>
    </message>
    <message>
        <source>Lowest API level that it runs on</source>
        <translation>أدنى مستوى API تعمل عليه</translation>
    </message>
    <message>
        <source>API level that it was made for</source>
        <translation>مستوى API الذي أُعدّت له</translation>
    </message>
    <message>
        <source>OpenGL ES</source>
        <translation>OpenGL ES</translation>
    </message>
    <message>
        <source>none</source>
        <translation>لا شيء</translation>
    </message>
    <message>
        <source>%1 → %2</source>
        <comment>before and after</comment>
        <translation>%1 ← %2</translation>
    </message>
    <message>
        <source>Changed</source>
        <translation>تغيّر</translation>
    </message>
    <message>
        <source>Permissions</source>
        <translation>الأذونات</translation>
    </message>
    <message>
        <source>Removed, dangerous</source>
        <translation>أُزيل، خطِر</translation>
    </message>
    <message>
        <source>Added, dangerous</source>
        <translation>أُضيف، خطِر</translation>
    </message>
    <message>
        <source>and %1 more</source>
        <translation>و%1 غيرها</translation>
    </message>
    <message>
        <source>Components</source>
        <translation>المكوّنات</translation>
    </message>
    <message>
        <source>Open to other applications</source>
        <translation>مفتوح للتطبيقات الأخرى</translation>
    </message>
    <message>
        <source>Sizes</source>
        <translation>الأحجام</translation>
    </message>
    <message>
        <source>%1 → %2, unpacked %3 → %4</source>
        <comment>sizes before and after</comment>
        <translation>%1 ← %2، بعد فك الضغط %3 ← %4</translation>
    </message>
    <message>
        <source>Files</source>
        <translation>الملفات</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <comment>split and path</comment>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>%1: %2 → %3</source>
        <comment>growth, size before and after</comment>
        <translation>%1: %2 ← %3</translation>
    </message>
    <message>
        <source>The same files, in another order or with other bytes between them</source>
        <translation>الملفات نفسها، بترتيب آخر أو ببايتات أخرى بينها</translation>
    </message>
    <message>
        <source>Added</source>
        <translation>أُضيف</translation>
    </message>
    <message>
        <source>Removed</source>
        <translation>أُزيل</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <comment>version and its number</comment>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>disabled</source>
        <translation>معطَّل</translation>
    </message>
    <message>
        <source>closed to other applications</source>
        <translation>مغلق أمام التطبيقات الأخرى</translation>
    </message>
    <message>
        <source>open to other applications without a permission</source>
        <translation>مفتوح للتطبيقات الأخرى بلا إذن</translation>
    </message>
    <message>
        <source>open to other applications with the permission %1</source>
        <translation>مفتوح للتطبيقات الأخرى بالإذن %1</translation>
    </message>
    <message>
        <source>open to other applications with the permissions %1 to read and %2 to write</source>
        <translation>مفتوح للتطبيقات الأخرى بالإذن %1 للقراءة والإذن %2 للكتابة</translation>
    </message>
    <message>
        <source>code</source>
        <translation>الشيفرة</translation>
    </message>
    <message>
        <source>resources</source>
        <translation>الموارد</translation>
    </message>
    <message>
        <source>native libraries</source>
        <translation>مكتبات أصلية</translation>
    </message>
    <message>
        <source>assets</source>
        <translation>الأصول</translation>
    </message>
    <message>
        <source>signatures</source>
        <translation>التواقيع</translation>
    </message>
    <message>
        <source>the file</source>
        <translation>الملف</translation>
    </message>
    <message>
        <source>other</source>
        <translation>غير ذلك</translation>
    </message>
    <message>
        <source>+%1</source>
        <comment>a size that grew</comment>
        <translation>+%1</translation>
    </message>
    <message>
        <source>-%1</source>
        <comment>a size that shrank</comment>
        <translation>-%1</translation>
    </message>
</context>
<context>
    <name>Viewer::DrawableDelegate</name>
    <message>
        <source>Drawing...</source>
        <translation>يجري الرسم...</translation>
    </message>
</context>
<context>
    <name>Viewer::DrawableStore</name>
    <message>
        <source>This drawable has no picture.</source>
        <translation>ليس لهذا الرسم صورة.</translation>
    </message>
</context>
<context>
    <name>Viewer::FindingsPage</name>
    <message>
        <source>Errors</source>
        <translation>أخطاء</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>خطأ</translation>
    </message>
    <message>
        <source>Warnings</source>
        <translation>تحذيرات</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>تحذير</translation>
    </message>
    <message>
        <source>Notes</source>
        <translation>إشارات</translation>
    </message>
    <message>
        <source>Note</source>
        <translation>إشارة</translation>
    </message>
    <message>
        <source>Findings</source>
        <translation>الملاحظات</translation>
    </message>
    <message>
        <source>No findings</source>
        <translation>لا ملاحظات</translation>
    </message>
</context>
<context>
    <name>Viewer::HeadView</name>
    <message>
        <source>version %1</source>
        <translation>الإصدار %1</translation>
    </message>
    <message>
        <source>Set of packages</source>
        <translation>مجموعة حزم</translation>
    </message>
    <message>
        <source>Package</source>
        <translation>حزمة</translation>
    </message>
    <message>
        <source>The package has no icon</source>
        <translation>ليس للحزمة أيقونة</translation>
    </message>
    <message>
        <source>Icon of the package</source>
        <translation>أيقونة الحزمة</translation>
    </message>
    <message>
        <source>Opens a menu with shapes of the icon.</source>
        <translation>يفتح قائمة بأشكال الأيقونة.</translation>
    </message>
    <message>
        <source>Shape of the icon</source>
        <translation>شكل الأيقونة</translation>
    </message>
</context>
<context>
    <name>Viewer::InstallCommand</name>
    <message>
        <source>No install command is set.</source>
        <translation>لم يُضبط أمر للتثبيت.</translation>
    </message>
    <message>
        <source>The command has no %f, which stands for the file.</source>
        <translation>ليس في الأمر ‎%f الذي يرمز إلى الملف.</translation>
    </message>
    <message>
        <source>The name of the file has characters that no command can contain.</source>
        <translation>في اسم الملف محارف لا يمكن لأي أمر أن يحتويها.</translation>
    </message>
</context>
<context>
    <name>Viewer::InstallQuestion</name>
    <message>
        <source>Install a Package?</source>
        <translation>تثبيت حزمة؟</translation>
    </message>
    <message>
        <source>Install “%1” (%2, version %3)?</source>
        <translation>تثبيت «%1» (%2، الإصدار %3)؟</translation>
    </message>
    <message>
        <source>The signer chose this name. Nobody checked it.</source>
        <translation>اختار الموقِّع هذا الاسم بنفسه. لم يتحقق منه أحد.</translation>
    </message>
    <message>
        <source>This command runs: %1</source>
        <translation>سيُنفَّذ هذا الأمر: %1</translation>
    </message>
    <message>
        <source>&amp;Install</source>
        <translation>&amp;تثبيت</translation>
    </message>
    <message>
        <source>Install it &amp;although it is not verified</source>
        <translation>تثبيت&amp;ها رغم أنها غير موثَّقة</translation>
    </message>
    <message>
        <source>Its permissions could not be read: %1</source>
        <translation>تعذّرت قراءة أذوناتها: %1</translation>
    </message>
    <message>
        <source>It asks for no dangerous permissions.</source>
        <translation>لا تطلب أذونات خطِرة.</translation>
    </message>
    <message numerus="yes">
        <source>and %n more</source>
        <translation>
            <numerusform>ولا شيء غيرها</numerusform><numerusform>وواحد غيرها</numerusform><numerusform>واثنان غيرها</numerusform><numerusform>و%n غيرها</numerusform><numerusform>و%n غيرها</numerusform><numerusform>و%n غيرها</numerusform></translation>
    </message>
    <message>
        <source>Dangerous permissions</source>
        <translation>أذونات خطِرة</translation>
    </message>
    <message>
        <source>It asks for dangerous permissions (%1):</source>
        <translation>تطلب أذونات خطِرة (%1):</translation>
    </message>
</context>
<context>
    <name>Viewer::InstallRun</name>
    <message>
        <source>Installing</source>
        <translation>جارٍ التثبيت</translation>
    </message>
    <message>
        <source>Output of the command</source>
        <translation>خرج الأمر</translation>
    </message>
    <message>
        <source>&amp;Stop</source>
        <translation>إ&amp;يقاف</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>إ&amp;غلاق</translation>
    </message>
    <message>
        <source>The command could not be started: %1</source>
        <translation>تعذّر بدء الأمر: %1</translation>
    </message>
    <message>
        <source>The command was ended before it was done.</source>
        <translation>أُنهي الأمر قبل أن يكتمل.</translation>
    </message>
    <message>
        <source>The command succeeded, with exit code 0.</source>
        <translation>نجح الأمر، ورمز الخروج 0.</translation>
    </message>
    <message>
        <source>The command failed, with exit code %1.</source>
        <translation>فشل الأمر، ورمز الخروج %1.</translation>
    </message>
    <message>
        <source>Running: %1</source>
        <translation>قيد التنفيذ: %1</translation>
    </message>
    <message>
        <source>More output is left out.</source>
        <translation>حُذف باقي الخرج.</translation>
    </message>
    <message>
        <source>Install Command Ended</source>
        <translation>انتهى أمر التثبيت</translation>
    </message>
</context>
<context>
    <name>Viewer::LanguagesPage</name>
    <message>
        <source>%1 (%2)</source>
        <comment>English and own name of a language</comment>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>اللغة</translation>
    </message>
    <message>
        <source>Tag</source>
        <translation>الوسم</translation>
    </message>
    <message>
        <source>Name of the application</source>
        <translation>اسم التطبيق</translation>
    </message>
    <message>
        <source>Languages</source>
        <translation>اللغات</translation>
    </message>
    <message>
        <source>All other languages</source>
        <translation>كل اللغات الأخرى</translation>
    </message>
    <message>
        <source>Languages that are not shown: %1</source>
        <translation>لغات غير معروضة: %1</translation>
    </message>
    <message>
        <source>This package has texts for no particular language.</source>
        <translation>ليس في هذه الحزمة نصوص للغة بعينها.</translation>
    </message>
</context>
<context>
    <name>Viewer::LaunchersPage</name>
    <message>
        <source>Home screen</source>
        <translation>الشاشة الرئيسية</translation>
    </message>
    <message>
        <source>Television</source>
        <translation>التلفاز</translation>
    </message>
    <message>
        <source>Car</source>
        <translation>السيارة</translation>
    </message>
    <message>
        <source>Services for cars</source>
        <translation>خدمات السيارات</translation>
    </message>
    <message>
        <source>Watch faces</source>
        <translation>أوجه الساعات</translation>
    </message>
    <message>
        <source>Replacements of the home screen</source>
        <translation>بدائل الشاشة الرئيسية</translation>
    </message>
    <message>
        <source>Tiles of the quick settings</source>
        <translation>مربعات الإعدادات السريعة</translation>
    </message>
    <message>
        <source>Live wallpapers</source>
        <translation>خلفيات حية</translation>
    </message>
    <message>
        <source>Keyboards</source>
        <translation>لوحات مفاتيح</translation>
    </message>
    <message>
        <source>Screen savers</source>
        <translation>شاشات توقف</translation>
    </message>
    <message>
        <source>Widgets</source>
        <translation>أدوات الشاشة</translation>
    </message>
    <message>
        <source>Share targets</source>
        <translation>وجهات المشاركة</translation>
    </message>
    <message>
        <source>Direct share targets</source>
        <translation>وجهات المشاركة المباشرة</translation>
    </message>
    <message>
        <source>Instant applications</source>
        <translation>تطبيقات فورية</translation>
    </message>
    <message>
        <source>Shortcuts</source>
        <translation>اختصارات</translation>
    </message>
    <message>
        <source>Other entries</source>
        <translation>مداخل أخرى</translation>
    </message>
    <message>
        <source>Launchers</source>
        <translation>المُشغِّلات</translation>
    </message>
    <message>
        <source>Not shown</source>
        <translation>غير معروض</translation>
    </message>
    <message>
        <source>This package has no launchers.</source>
        <translation>ليس في هذه الحزمة مُشغِّلات.</translation>
    </message>
</context>
<context>
    <name>Viewer::ManifestPage</name>
    <message>
        <source>Manifest</source>
        <translation>البيان</translation>
    </message>
    <message>
        <source>Characters that are not shown: %1</source>
        <translation>محارف غير معروضة: %1</translation>
    </message>
    <message>
        <source>The manifest is empty.</source>
        <translation>البيان فارغ.</translation>
    </message>
</context>
<context>
    <name>Viewer::MemberKind</name>
    <message>
        <source>code</source>
        <translation>الشيفرة</translation>
    </message>
    <message>
        <source>resources</source>
        <translation>الموارد</translation>
    </message>
    <message>
        <source>native libraries</source>
        <translation>مكتبات أصلية</translation>
    </message>
    <message>
        <source>assets</source>
        <translation>الأصول</translation>
    </message>
    <message>
        <source>META-INF</source>
        <translation>META-INF</translation>
    </message>
    <message>
        <source>other</source>
        <translation>غير ذلك</translation>
    </message>
</context>
<context>
    <name>Viewer::MemberModel</name>
    <message>
        <source>Size</source>
        <translation>الحجم</translation>
    </message>
    <message>
        <source>Packed</source>
        <translation>مضغوط</translation>
    </message>
    <message>
        <source>Share</source>
        <translation>الحصة</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>الاسم</translation>
    </message>
</context>
<context>
    <name>Viewer::MemberTree</name>
    <message>
        <source>the package</source>
        <translation>الحزمة</translation>
    </message>
    <message>
        <source>(no name)</source>
        <translation>(بلا اسم)</translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation>%1 %</translation>
    </message>
    <message>
        <source>%1, %2 packed, %3 of the package</source>
        <translation>%1، مضغوطًا %2، %3 من الحزمة</translation>
    </message>
    <message>
        <source>folder (files: %1)</source>
        <translation>مجلد (الملفات: %1)</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation>%1، %2</translation>
    </message>
</context>
<context>
    <name>Viewer::PackageFacts</name>
    <message>
        <source>%1 (%2)</source>
        <comment>name and number of a version</comment>
        <translation>%1 (%2)</translation>
    </message>
    <message>
        <source>The package cannot be read.</source>
        <translation>تتعذّر قراءة الحزمة.</translation>
    </message>
</context>
<context>
    <name>Viewer::PackageWindow</name>
    <message>
        <source>Android Packages</source>
        <translation>حزم أندرويد</translation>
    </message>
    <message>
        <source>Drop a package here, or open one.</source>
        <translation>أفلِت حزمة هنا أو افتح واحدة.</translation>
    </message>
    <message>
        <source>Open a Package</source>
        <translation>فتح حزمة</translation>
    </message>
    <message>
        <source>Compare With a Package</source>
        <translation>مقارنة مع حزمة</translation>
    </message>
    <message>
        <source>About</source>
        <translation>حول</translation>
    </message>
    <message>
        <source>Sorrel %1 shows Android packages before they are opened. A process of its own, within a sandbox, reads them.</source>
        <translation>يعرض Sorrel %1 حزم أندرويد قبل فتحها. تقرؤها عملية مستقلة معزولة.</translation>
    </message>
    <message>
        <source>Reading the package…</source>
        <translation>تجري قراءة الحزمة…</translation>
    </message>
    <message>
        <source>The package could not be read.</source>
        <translation>تعذّرت قراءة الحزمة.</translation>
    </message>
    <message>
        <source>The package is being read.</source>
        <translation>تجري قراءة الحزمة.</translation>
    </message>
    <message>
        <source>The signer chose these names. Nobody checked them.</source>
        <translation>اختار الموقِّع هذه الأسماء بنفسه. لم يتحقق منها أحد.</translation>
    </message>
    <message>
        <source>Signature</source>
        <translation>التوقيع</translation>
    </message>
    <message>
        <source>Install</source>
        <translation>التثبيت</translation>
    </message>
    <message>
        <source>The file changed since it was read, so it was not installed. It is read again.</source>
        <translation>تغيّر الملف منذ قراءته، فلم يُثبَّت. تُعاد قراءته.</translation>
    </message>
    <message>
        <source>Android packages (%1)</source>
        <translation>حزم أندرويد (%1)</translation>
    </message>
    <message>
        <source>All files (%1)</source>
        <translation>كل الملفات (%1)</translation>
    </message>
</context>
<context>
    <name>Viewer::Page</name>
    <message>
        <source>Reading...</source>
        <translation>تجري القراءة...</translation>
    </message>
</context>
<context>
    <name>Viewer::PagePanel</name>
    <message>
        <source>Pages</source>
        <translation>الصفحات</translation>
    </message>
</context>
<context>
    <name>Viewer::PermissionsPage</name>
    <message>
        <source>Permissions</source>
        <translation>الأذونات</translation>
    </message>
    <message>
        <source>Dangerous</source>
        <translation>خطِر</translation>
    </message>
    <message>
        <source>May ask for</source>
        <translation>قد تطلب</translation>
    </message>
    <message>
        <source>Gets without asking</source>
        <translation>تحصل دون سؤال على</translation>
    </message>
    <message>
        <source>This package asks for no permissions.</source>
        <translation>لا تطلب هذه الحزمة أذونات.</translation>
    </message>
</context>
<context>
    <name>Viewer::Reading</name>
    <message>
        <source>Reading the package took too long.</source>
        <translation>استغرقت قراءة الحزمة وقتًا طويلًا.</translation>
    </message>
    <message>
        <source>The program that reads packages could not be started.</source>
        <translation>تعذّر بدء البرنامج الذي يقرأ الحزم.</translation>
    </message>
    <message>
        <source>The program that reads packages sent something unexpected, and was ended.</source>
        <translation>أرسل البرنامج الذي يقرأ الحزم شيئًا غير متوقع فأُنهي.</translation>
    </message>
    <message>
        <source>Reading the package took too much memory.</source>
        <translation>استهلكت قراءة الحزمة ذاكرة كبيرة.</translation>
    </message>
    <message>
        <source>The program that reads packages ended unexpectedly; the package may be made to harm it.</source>
        <translation>انتهى البرنامج الذي يقرأ الحزم فجأة؛ قد تكون الحزمة مصنوعة للإضرار به.</translation>
    </message>
</context>
<context>
    <name>Viewer::ResourcesPage</name>
    <message>
        <source>Name</source>
        <translation>الاسم</translation>
    </message>
    <message>
        <source>Type</source>
        <translation>النوع</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>القيمة</translation>
    </message>
    <message>
        <source>Filter</source>
        <translation>تصفية</translation>
    </message>
    <message>
        <source>Text in the names and values to show</source>
        <translation>نص في الأسماء والقيم المراد عرضها</translation>
    </message>
    <message>
        <source>Drawables</source>
        <translation>الرسوم</translation>
    </message>
    <message>
        <source>Resources</source>
        <translation>الموارد</translation>
    </message>
    <message>
        <source>Resources that are not shown: %1</source>
        <translation>موارد غير معروضة: %1</translation>
    </message>
    <message>
        <source>This package has no resources.</source>
        <translation>ليس في هذه الحزمة موارد.</translation>
    </message>
    <message>
        <source>List (%1)</source>
        <translation>قائمة (%1)</translation>
    </message>
    <message>
        <source>Gallery (%1)</source>
        <translation>معرض (%1)</translation>
    </message>
</context>
<context>
    <name>Viewer::SearchBar</name>
    <message>
        <source>Search</source>
        <translation>بحث</translation>
    </message>
    <message>
        <source>Text to search for</source>
        <translation>النص المطلوب</translation>
    </message>
    <message>
        <source>Previous match</source>
        <translation>المطابقة السابقة</translation>
    </message>
    <message>
        <source>Previous match (Shift+F3)</source>
        <translation>المطابقة السابقة (Shift+F3)</translation>
    </message>
    <message>
        <source>Next match</source>
        <translation>المطابقة التالية</translation>
    </message>
    <message>
        <source>Next match (F3)</source>
        <translation>المطابقة التالية (F3)</translation>
    </message>
    <message>
        <source>Not found</source>
        <translation>غير موجود</translation>
    </message>
    <message>
        <source>%1 of more than %2</source>
        <translation>%1 من أكثر من %2</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 من %2</translation>
    </message>
</context>
<context>
    <name>Viewer::SignatureState</name>
    <message>
        <source>Certificate of %1, SHA-256 %2</source>
        <translation>شهادة %1، ‏SHA-256 %2</translation>
    </message>
    <message>
        <source>, </source>
        <comment>between names of signers</comment>
        <translation>، </translation>
    </message>
    <message>
        <source>The signature is being read…</source>
        <translation>تجري قراءة التوقيع…</translation>
    </message>
    <message>
        <source>Verified</source>
        <translation>موثَّقة</translation>
    </message>
    <message>
        <source>Verified, signed by %1</source>
        <translation>موثَّقة، وقّعها %1</translation>
    </message>
    <message>
        <source>Not verified</source>
        <translation>غير موثَّقة</translation>
    </message>
    <message>
        <source>Not verified: %1</source>
        <translation>غير موثَّقة: %1</translation>
    </message>
    <message>
        <source>The signature could not be read</source>
        <translation>تعذّرت قراءة التوقيع</translation>
    </message>
    <message>
        <source>The signature could not be read: %1</source>
        <translation>تعذّرت قراءة التوقيع: %1</translation>
    </message>
</context>
<context>
    <name>Viewer::TreemapView</name>
    <message>
        <source>Contents by size</source>
        <translation>المحتوى حسب الحجم</translation>
    </message>
</context>
<context>
    <name>Viewer::WindowActions</name>
    <message>
        <source>&amp;File</source>
        <translation>&amp;ملف</translation>
    </message>
    <message>
        <source>&amp;Open…</source>
        <translation>&amp;فتح…</translation>
    </message>
    <message>
        <source>&amp;Reload</source>
        <translation>إ&amp;عادة التحميل</translation>
    </message>
    <message>
        <source>Co&amp;mpare With…</source>
        <translation>&amp;مقارنة مع…</translation>
    </message>
    <message>
        <source>&amp;Install…</source>
        <translation>&amp;تثبيت…</translation>
    </message>
    <message>
        <source>Install Comma&amp;nd…</source>
        <translation>&amp;أمر التثبيت…</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>إ&amp;غلاق</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;خروج</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;عرض</translation>
    </message>
    <message>
        <source>&amp;Pages</source>
        <translation>ال&amp;صفحات</translation>
    </message>
    <message>
        <source>&amp;Shape of the Icon</source>
        <translation>&amp;شكل الأيقونة</translation>
    </message>
    <message>
        <source>&amp;Language of the Package</source>
        <translation>&amp;لغة الحزمة</translation>
    </message>
    <message>
        <source>Si&amp;gnature…</source>
        <translation>الت&amp;وقيع…</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>م&amp;ساعدة</translation>
    </message>
    <message>
        <source>&amp;About</source>
        <translation>&amp;حول</translation>
    </message>
    <message>
        <source>&amp;None</source>
        <translation>&amp;بلا</translation>
    </message>
    <message>
        <source>&amp;Circle</source>
        <translation>&amp;دائرة</translation>
    </message>
    <message>
        <source>&amp;Rounded Square</source>
        <translation>&amp;مربع مستدير</translation>
    </message>
    <message>
        <source>&amp;Squircle</source>
        <translation>مربع &amp;فائق الاستدارة</translation>
    </message>
    <message>
        <source>&amp;My Language</source>
        <translation>ل&amp;غتي</translation>
    </message>
</context>
</TS>
