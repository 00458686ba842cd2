<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ar" sourcelanguage="en">
<context>
    <name>Report</name>
    <message>
        <source>, </source>
        <translation>، </translation>
    </message>
    <message>
        <source>name</source>
        <translation>الاسم</translation>
    </message>
    <message>
        <source>package</source>
        <translation>الحزمة</translation>
    </message>
    <message>
        <source>version</source>
        <translation>الإصدار</translation>
    </message>
    <message>
        <source>minimum SDK</source>
        <translation>يتطلّب</translation>
    </message>
    <message>
        <source>target SDK</source>
        <translation>مُعدّ لـ</translation>
    </message>
    <message>
        <source>size</source>
        <translation>الحجم</translation>
    </message>
    <message>
        <source>unpacked</source>
        <translation>بعد فك الضغط</translation>
    </message>
    <message>
        <source>code</source>
        <translation>الرمز البرمجي</translation>
    </message>
    <message>
        <source>libraries</source>
        <translation>المكتبات</translation>
    </message>
    <message>
        <source>resources</source>
        <translation>الموارد</translation>
    </message>
    <message>
        <source>other files</source>
        <translation>ملفات أخرى</translation>
    </message>
    <message>
        <source>asks for</source>
        <translation>يطلب الإذن</translation>
    </message>
    <message>
        <source>no group</source>
        <translation>بلا مجموعة</translation>
    </message>
    <message>
        <source>in settings</source>
        <translation>من الإعدادات</translation>
    </message>
    <message>
        <source>gets</source>
        <translation>يُمنح تلقائيًا</translation>
    </message>
    <message>
        <source>requests</source>
        <translation>يلتمس</translation>
    </message>
    <message>
        <source>%1 more, which --all shows</source>
        <translation>%1 غيرها، يعرضها --all</translation>
    </message>
    <message>
        <source>optional</source>
        <translation>اختياري</translation>
    </message>
    <message>
        <source>implied: %1</source>
        <translation>ضمني: %1</translation>
    </message>
    <message>
        <source>needs</source>
        <translation>يحتاج إلى</translation>
    </message>
    <message>
        <source>can use</source>
        <translation>يمكنه استخدام</translation>
    </message>
    <message>
        <source>implies</source>
        <translation>يفترض وجود</translation>
    </message>
    <message>
        <source>processors</source>
        <translation>المعالجات</translation>
    </message>
    <message>
        <source>languages</source>
        <translation>اللغات</translation>
    </message>
    <message>
        <source>%1 and %2 more</source>
        <translation>%1 و%2 غيرها</translation>
    </message>
    <message>
        <source>splits</source>
        <translation>الحزم الجزئية</translation>
    </message>
    <message>
        <source>launcher</source>
        <translation>المشغّل</translation>
    </message>
    <message>
        <source>label</source>
        <translation>العنوان</translation>
    </message>
    <message>
        <source>icons</source>
        <translation>الأيقونات</translation>
    </message>
    <message>
        <source>none</source>
        <translation>لا شيء</translation>
    </message>
</context>
<context>
    <name>AndroidVersion</name>
    <message>
        <source>a preview of Android</source>
        <translation>إصدار تجريبي من Android</translation>
    </message>
    <message>
        <source>%1 and later</source>
        <translation>%1 والإصدارات الأحدث</translation>
    </message>
    <message>
        <source>%1 to %2</source>
        <translation>من %1 إلى %2</translation>
    </message>
</context>
<context>
    <name>Feature</name>
    <message>
        <source>sound with low latency</source>
        <translation>صوت بزمن استجابة منخفض</translation>
    </message>
    <message>
        <source>sound output</source>
        <translation>إخراج الصوت</translation>
    </message>
    <message>
        <source>professional sound</source>
        <translation>صوت احترافي</translation>
    </message>
    <message>
        <source>camera on the back</source>
        <translation>كاميرا خلفية</translation>
    </message>
    <message>
        <source>any camera</source>
        <translation>أي كاميرا</translation>
    </message>
    <message>
        <source>camera with autofocus</source>
        <translation>كاميرا بتركيز تلقائي</translation>
    </message>
    <message>
        <source>external camera</source>
        <translation>كاميرا خارجية</translation>
    </message>
    <message>
        <source>camera with a flash</source>
        <translation>كاميرا بفلاش</translation>
    </message>
    <message>
        <source>camera on the front</source>
        <translation>كاميرا أمامية</translation>
    </message>
    <message>
        <source>infrared transmitter</source>
        <translation>مرسل أشعة تحت حمراء</translation>
    </message>
    <message>
        <source>wired network</source>
        <translation>شبكة سلكية</translation>
    </message>
    <message>
        <source>pointer or touch screen</source>
        <translation>مؤشر أو شاشة لمس</translation>
    </message>
    <message>
        <source>fingerprint reader</source>
        <translation>قارئ بصمات</translation>
    </message>
    <message>
        <source>game controller</source>
        <translation>وحدة تحكّم بالألعاب</translation>
    </message>
    <message>
        <source>location</source>
        <translation>الموقع الجغرافي</translation>
    </message>
    <message>
        <source>satellite positioning</source>
        <translation>تحديد الموقع بالأقمار الصناعية</translation>
    </message>
    <message>
        <source>location by networks</source>
        <translation>تحديد الموقع عبر الشبكات</translation>
    </message>
    <message>
        <source>microphone</source>
        <translation>ميكروفون</translation>
    </message>
    <message>
        <source>screen in landscape</source>
        <translation>شاشة بالوضع الأفقي</translation>
    </message>
    <message>
        <source>screen in portrait</source>
        <translation>شاشة بالوضع العمودي</translation>
    </message>
    <message>
        <source>accelerometer</source>
        <translation>مقياس التسارع</translation>
    </message>
    <message>
        <source>barometer</source>
        <translation>بارومتر</translation>
    </message>
    <message>
        <source>compass</source>
        <translation>بوصلة</translation>
    </message>
    <message>
        <source>gyroscope</source>
        <translation>جيروسكوب</translation>
    </message>
    <message>
        <source>light sensor</source>
        <translation>مستشعر الضوء</translation>
    </message>
    <message>
        <source>proximity sensor</source>
        <translation>مستشعر القرب</translation>
    </message>
    <message>
        <source>step counter</source>
        <translation>عدّاد الخطوات</translation>
    </message>
    <message>
        <source>telephone</source>
        <translation>هاتف</translation>
    </message>
    <message>
        <source>touch screen</source>
        <translation>شاشة لمس</translation>
    </message>
    <message>
        <source>car</source>
        <translation>سيارة</translation>
    </message>
    <message>
        <source>television</source>
        <translation>تلفزيون</translation>
    </message>
    <message>
        <source>watch</source>
        <translation>ساعة</translation>
    </message>
    <message>
        <source>television interface</source>
        <translation>واجهة تلفزيون</translation>
    </message>
    <message>
        <source>Wi-Fi</source>
        <translation>Wi-Fi</translation>
    </message>
    <message>
        <source>widgets</source>
        <translation>أدوات الشاشة الرئيسية</translation>
    </message>
    <message>
        <source>live wallpapers</source>
        <translation>خلفيات متحركة</translation>
    </message>
    <message>
        <source>input methods</source>
        <translation>طرق الإدخال</translation>
    </message>
    <message>
        <source>printing</source>
        <translation>الطباعة</translation>
    </message>
</context>
</TS>
