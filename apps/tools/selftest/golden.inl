// clang-format off
// Made by selftest_golden from the reference. In the order of allCases().
0xCF854CB9AAEF4465,  // bilinear, 8 bits, grbg, binning 1
0xAFFE7A6617A9E4A6,  // bilinear, 8 bits, bggr, binning 1
0xA42F34F9CB26A3C6,  // bilinear, 8 bits, rggb, binning 1
0x4FA605D707155035,  // bilinear, 8 bits, gbrg, binning 1
0x27C35E592DF6EBA5,  // bilinear, 8 bits, rggb, binning 2
0x25F2DF8910128DFD,  // bilinear, 8 bits, rggb, binning 3
0x0D79975CC7DF8658,  // bilinear, 8 bits, rggb, binning 4
0x9965797E8A71B36E,  // bilinear, 10 bits, grbg, binning 1
0xEB5ED5A6E2156CF1,  // bilinear, 10 bits, bggr, binning 1
0xAE2D303FAD5768A1,  // bilinear, 10 bits, rggb, binning 1
0x1A64134F7CC4B46E,  // bilinear, 10 bits, gbrg, binning 1
0xD1893F235ED66094,  // bilinear, 10 bits, rggb, binning 2
0x676A67A33854C97C,  // bilinear, 10 bits, rggb, binning 3
0x3EDA8EEDE535D597,  // bilinear, 10 bits, rggb, binning 4
0x9F60DC8F536DE665,  // bilinear, 12 bits, grbg, binning 1
0x4A5285F1401DD748,  // bilinear, 12 bits, bggr, binning 1
0x9FC5FC518B23DDDC,  // bilinear, 12 bits, rggb, binning 1
0x6BA96558E1079739,  // bilinear, 12 bits, gbrg, binning 1
0x898DCA35368EFF5A,  // bilinear, 12 bits, rggb, binning 2
0x7C5CF094CE44D06A,  // bilinear, 12 bits, rggb, binning 3
0x4B7CA8B9F1854494,  // bilinear, 12 bits, rggb, binning 4
0x400ADA7A27D95EEB,  // bilinear, 14 bits, grbg, binning 1
0xA1E083890906BAB1,  // bilinear, 14 bits, bggr, binning 1
0x61B6329D542AE339,  // bilinear, 14 bits, rggb, binning 1
0x9C203DE0F4995C63,  // bilinear, 14 bits, gbrg, binning 1
0xE7B1043AE2ED450C,  // bilinear, 14 bits, rggb, binning 2
0x5EC10FA89D1E6107,  // bilinear, 14 bits, rggb, binning 3
0x3EC05EC036EEEBCB,  // bilinear, 14 bits, rggb, binning 4
0x8B2F6BC2609212D7,  // bilinear, 16 bits, grbg, binning 1
0x51A30050B8B1841E,  // bilinear, 16 bits, bggr, binning 1
0xEA98ED274804F5A2,  // bilinear, 16 bits, rggb, binning 1
0xF3D6B31C22B7D3BB,  // bilinear, 16 bits, gbrg, binning 1
0x53B941DD74861D78,  // bilinear, 16 bits, rggb, binning 2
0xC1B5FE96C1F8A915,  // bilinear, 16 bits, rggb, binning 3
0x56837F70E05B4220,  // bilinear, 16 bits, rggb, binning 4
0xBFA7EDF9F4638DE8,  // edge, 8 bits, grbg, binning 1
0x6FE1F7A8AA04313A,  // edge, 8 bits, bggr, binning 1
0x605314DB5A39EB2E,  // edge, 8 bits, rggb, binning 1
0x62AA01B153137844,  // edge, 8 bits, gbrg, binning 1
0x012CACECEA8B1B25,  // edge, 8 bits, rggb, binning 2
0xCD729698771D4020,  // edge, 8 bits, rggb, binning 3
0x3AB43104DC8F7263,  // edge, 8 bits, rggb, binning 4
0x8D0478408D27EC9D,  // edge, 10 bits, grbg, binning 1
0x32EDA8C28C520F83,  // edge, 10 bits, bggr, binning 1
0x8CB59CD0A8581D8F,  // edge, 10 bits, rggb, binning 1
0x1D014D7995072E9D,  // edge, 10 bits, gbrg, binning 1
0x8348DC90AFCF2385,  // edge, 10 bits, rggb, binning 2
0xD18BEDCE3162DE40,  // edge, 10 bits, rggb, binning 3
0xDA50DF2DAFA519A0,  // edge, 10 bits, rggb, binning 4
0x759658A38A520E8F,  // edge, 12 bits, grbg, binning 1
0x5876F6B5A9732852,  // edge, 12 bits, bggr, binning 1
0x62414DA8EF326F5E,  // edge, 12 bits, rggb, binning 1
0xBDC5B58EBE9098D3,  // edge, 12 bits, gbrg, binning 1
0xB5BD69116E1B92D1,  // edge, 12 bits, rggb, binning 2
0x1FD1549D1091B402,  // edge, 12 bits, rggb, binning 3
0x1DAE4FE23FF4D31B,  // edge, 12 bits, rggb, binning 4
0x41700FED555B109D,  // edge, 14 bits, grbg, binning 1
0xE9EE6D189F5E7CEA,  // edge, 14 bits, bggr, binning 1
0xB42987FF2A81E526,  // edge, 14 bits, rggb, binning 1
0xE604E96E531940D9,  // edge, 14 bits, gbrg, binning 1
0xFAA1F6B0E1048664,  // edge, 14 bits, rggb, binning 2
0xFA3D08C24F217EDB,  // edge, 14 bits, rggb, binning 3
0x3E8A73B798DAB41E,  // edge, 14 bits, rggb, binning 4
0xFC159AA7734303D0,  // edge:20, 8 bits, grbg, binning 1
0x62A7052456A00E1E,  // edge:20, 8 bits, bggr, binning 1
0x22AA8D3FBED2D3F6,  // edge:20, 8 bits, rggb, binning 1
0x5F969FCF5B202904,  // edge:20, 8 bits, gbrg, binning 1
0x4C2CB26FF4B2A04B,  // edge:20, 8 bits, rggb, binning 2
0xFD733EBAE4E452C0,  // edge:20, 8 bits, rggb, binning 3
0x433518431DF94CC9,  // edge:20, 8 bits, rggb, binning 4
0x798CA3D24A0D156E,  // edge:20, 10 bits, grbg, binning 1
0xF146D413ED130CBB,  // edge:20, 10 bits, bggr, binning 1
0x984EFAADEC8270BF,  // edge:20, 10 bits, rggb, binning 1
0x4DBF20A148E477AE,  // edge:20, 10 bits, gbrg, binning 1
0x365FCCC3CF5AB65D,  // edge:20, 10 bits, rggb, binning 2
0x2FCF637A30C05D61,  // edge:20, 10 bits, rggb, binning 3
0xA4513FB0D6055E5C,  // edge:20, 10 bits, rggb, binning 4
0xC0235DC31F65453D,  // edge:20, 12 bits, grbg, binning 1
0x5C9B4B4DD395C64F,  // edge:20, 12 bits, bggr, binning 1
0xB332B0B9BB446F97,  // edge:20, 12 bits, rggb, binning 1
0xF0AEC2DFEE0C2179,  // edge:20, 12 bits, gbrg, binning 1
0x7D05C81A210C604E,  // edge:20, 12 bits, rggb, binning 2
0x446386DA7F5E247F,  // edge:20, 12 bits, rggb, binning 3
0x7DC3534BA689F03A,  // edge:20, 12 bits, rggb, binning 4
0x94CC1DB94FC79888,  // edge:20, 14 bits, grbg, binning 1
0xFFA026688E47C7FE,  // edge:20, 14 bits, bggr, binning 1
0x2D629E3196C8F37A,  // edge:20, 14 bits, rggb, binning 1
0x6F65EABE39A2A3E4,  // edge:20, 14 bits, gbrg, binning 1
0x96B99F96518693D5,  // edge:20, 14 bits, rggb, binning 2
0xBECF9D476BF00A71,  // edge:20, 14 bits, rggb, binning 3
0xCD9ED21B708221CF,  // edge:20, 14 bits, rggb, binning 4
0x9E777FB36254E3B5,  // near, 8 bits, grbg, binning 1
0x410E5C1BA32660DE,  // near, 8 bits, bggr, binning 1
0x1C57C7D519564E3E,  // near, 8 bits, rggb, binning 1
0xE148DCCCAD711551,  // near, 8 bits, gbrg, binning 1
0xAD69426E78844EF6,  // near, 8 bits, rggb, binning 2
0x0ABC28B78E019D40,  // near, 8 bits, rggb, binning 3
0xF97FD81F474DA069,  // near, 8 bits, rggb, binning 4
0xD2E901E737FF4199,  // near, 10 bits, grbg, binning 1
0x0A989A0C3FC3D012,  // near, 10 bits, bggr, binning 1
0xEA865434871DA602,  // near, 10 bits, rggb, binning 1
0x025EFBEEB9C5196D,  // near, 10 bits, gbrg, binning 1
0x5711D00C593BBD6A,  // near, 10 bits, rggb, binning 2
0x6AD263BC6A89611B,  // near, 10 bits, rggb, binning 3
0xE5DF5B89AAF74EA7,  // near, 10 bits, rggb, binning 4
0x860C88675B60FE4B,  // near, 12 bits, grbg, binning 1
0x03B21D2DC790712D,  // near, 12 bits, bggr, binning 1
0xB30920B376F51A35,  // near, 12 bits, rggb, binning 1
0x09EB563F9AB2869F,  // near, 12 bits, gbrg, binning 1
0x440E4CEF6D527481,  // near, 12 bits, rggb, binning 2
0x7ADBC7254AB00B8E,  // near, 12 bits, rggb, binning 3
0x04D3439B295CC861,  // near, 12 bits, rggb, binning 4
0x00153330247CDB7E,  // near, 14 bits, grbg, binning 1
0x0E9012703150BB5A,  // near, 14 bits, bggr, binning 1
0x3E3C352B60510A5E,  // near, 14 bits, rggb, binning 1
0xBC9130A04ECC7126,  // near, 14 bits, gbrg, binning 1
0x947A86048B6E2426,  // near, 14 bits, rggb, binning 2
0xF364C61C29F75A33,  // near, 14 bits, rggb, binning 3
0xEA4CA7FCF1369F2C,  // near, 14 bits, rggb, binning 4
0x941E3F02C5356E70,  // near, 16 bits, grbg, binning 1
0xF7E67F73969005C9,  // near, 16 bits, bggr, binning 1
0xAE83A4310BE258DD,  // near, 16 bits, rggb, binning 1
0xD4E64C097A341B1C,  // near, 16 bits, gbrg, binning 1
0x36B4AFDB7499490D,  // near, 16 bits, rggb, binning 2
0xD94EA3F0D9290D30,  // near, 16 bits, rggb, binning 3
0x47769C9B30ED2E7D,  // near, 16 bits, rggb, binning 4
0xEA2CF72A7059D374,  // laroche, 8 bits, grbg, binning 1
0x01503A343DF37ACC,  // laroche, 8 bits, bggr, binning 1
0xCF7F091508F586CC,  // laroche, 8 bits, rggb, binning 1
0x085870E0D41FC0D0,  // laroche, 8 bits, gbrg, binning 1
0x60A7B5ED43AE0916,  // laroche, 8 bits, rggb, binning 2
0xAAEC2F649715D1FA,  // laroche, 8 bits, rggb, binning 3
0x8CBE38CDF3FBC4B3,  // laroche, 8 bits, rggb, binning 4
0x3B89E6A4C7A0F728,  // laroche, 10 bits, grbg, binning 1
0xD6075C41994D608D,  // laroche, 10 bits, bggr, binning 1
0xAC452B972F923A81,  // laroche, 10 bits, rggb, binning 1
0xBF25305C757A5344,  // laroche, 10 bits, gbrg, binning 1
0x58AC2C12A755BA0C,  // laroche, 10 bits, rggb, binning 2
0x4390FDECA1CF369C,  // laroche, 10 bits, rggb, binning 3
0x3F5B230C876151FC,  // laroche, 10 bits, rggb, binning 4
0x7F4FB4DC867025DA,  // hamilton, 8 bits, grbg, binning 1
0xC418F304BC326ED6,  // hamilton, 8 bits, bggr, binning 1
0xFEBA17B7D84EC516,  // hamilton, 8 bits, rggb, binning 1
0xD000AE5DC53BAE36,  // hamilton, 8 bits, gbrg, binning 1
0xDCAAE70EA72B493C,  // hamilton, 8 bits, rggb, binning 2
0x0BCD87783D3257D5,  // hamilton, 8 bits, rggb, binning 3
0x525C36A9055A8A2A,  // hamilton, 8 bits, rggb, binning 4
0x388FCC30F3F4C560,  // hamilton, 10 bits, grbg, binning 1
0xD67119E53C3D96C6,  // hamilton, 10 bits, bggr, binning 1
0x931D0F20D87619A2,  // hamilton, 10 bits, rggb, binning 1
0x53DB286AFC18DA10,  // hamilton, 10 bits, gbrg, binning 1
0x0E70DFAFC934BFF7,  // hamilton, 10 bits, rggb, binning 2
0x5962BECF2AC7354F,  // hamilton, 10 bits, rggb, binning 3
0x4DF8D9CAB3939DD4,  // hamilton, 10 bits, rggb, binning 4
0x8C7D6427D95BC0CE,  // vng, 8 bits, grbg, binning 1
0x5621A3514366B021,  // vng, 8 bits, bggr, binning 1
0xA531E70EB22ED419,  // vng, 8 bits, rggb, binning 1
0xDB87AEA5CEF0E58E,  // vng, 8 bits, gbrg, binning 1
0x468C640363B8BF64,  // vng, 8 bits, rggb, binning 2
0x7EB068F02B56BB6D,  // vng, 8 bits, rggb, binning 3
0xFF402E7E25A77A45,  // vng, 8 bits, rggb, binning 4
0xFA09BEADAC0CFC09,  // vng, 10 bits, grbg, binning 1
0x2C062B0CA95A898B,  // vng, 10 bits, bggr, binning 1
0x68EEF340BFE69903,  // vng, 10 bits, rggb, binning 1
0xDC4853021F68B269,  // vng, 10 bits, gbrg, binning 1
0xEA1A5EFB69AA939A,  // vng, 10 bits, rggb, binning 2
0x69518821D350B31A,  // vng, 10 bits, rggb, binning 3
0x828E040BF05C0250,  // vng, 10 bits, rggb, binning 4
0x55B25E3A2E57A071,  // cok, 8 bits, grbg, binning 1
0x00860C61786A8D21,  // cok, 8 bits, bggr, binning 1
0x44AADCA252EDAFE5,  // cok, 8 bits, rggb, binning 1
0x61F1255DDB567631,  // cok, 8 bits, gbrg, binning 1
0x7BAC045435119485,  // cok, 8 bits, rggb, binning 2
0xD326D7189BFD6E9C,  // cok, 8 bits, rggb, binning 3
0x21CC38AAE7756371,  // cok, 8 bits, rggb, binning 4
0x87B380C359D475A1,  // cok, 10 bits, grbg, binning 1
0x994E3661C243BEC5,  // cok, 10 bits, bggr, binning 1
0xCE697DF183C72A4D,  // cok, 10 bits, rggb, binning 1
0xD2408E1E1F6FA251,  // cok, 10 bits, gbrg, binning 1
0x6CCC55446F6679AC,  // cok, 10 bits, rggb, binning 2
0x7F149DE8A3509D74,  // cok, 10 bits, rggb, binning 3
0xD16DB39A69B6238B,  // cok, 10 bits, rggb, binning 4
0xEF6F158C4B02006D,  // kimmel, 8 bits, grbg, binning 1
0x0431FF9A053CA74C,  // kimmel, 8 bits, bggr, binning 1
0xFFF42863C9C91924,  // kimmel, 8 bits, rggb, binning 1
0x14475E72285FB76D,  // kimmel, 8 bits, gbrg, binning 1
0xA57A96D3756545EC,  // kimmel, 8 bits, rggb, binning 2
0x3FC9D67991C47708,  // kimmel, 8 bits, rggb, binning 3
0x6A5013B6DA3A098F,  // kimmel, 8 bits, rggb, binning 4
0x87DF88B19D232035,  // kimmel, 10 bits, grbg, binning 1
0x121D7D7FAA95CAA5,  // kimmel, 10 bits, bggr, binning 1
0x627C20B0E05A2965,  // kimmel, 10 bits, rggb, binning 1
0xF9FFFA4A92B3BD75,  // kimmel, 10 bits, gbrg, binning 1
0x662D56F8B22553DA,  // kimmel, 10 bits, rggb, binning 2
0x2000935659EB9936,  // kimmel, 10 bits, rggb, binning 3
0x2F1298E0213A7839,  // kimmel, 10 bits, rggb, binning 4
0x5525E8984D43576E,  // grouping, 8 bits, grbg, binning 1
0x5400C6ED82CD07F4,  // grouping, 8 bits, bggr, binning 1
0x0C6E1D7099645428,  // grouping, 8 bits, rggb, binning 1
0x4B22B503A6601AA6,  // grouping, 8 bits, gbrg, binning 1
0xF8FB96DE13A7BE3B,  // grouping, 8 bits, rggb, binning 2
0x37C9604579BAC806,  // grouping, 8 bits, rggb, binning 3
0x4CC15AA267C76F44,  // grouping, 8 bits, rggb, binning 4
0x0929D01BE8C386E9,  // grouping, 10 bits, grbg, binning 1
0xEC2EE5349A6236F7,  // grouping, 10 bits, bggr, binning 1
0xCE8765929E79C8AB,  // grouping, 10 bits, rggb, binning 1
0x03C05BE2A8AEA591,  // grouping, 10 bits, gbrg, binning 1
0xC9B2EE93B1AE7736,  // grouping, 10 bits, rggb, binning 2
0xBC14DB7C69C2C989,  // grouping, 10 bits, rggb, binning 3
0x57A95AC3139F132B,  // grouping, 10 bits, rggb, binning 4
0xE8B3ED0D9C98B9C8,  // ahd, 8 bits, grbg, binning 1
0x08F8F9C4D4336D88,  // ahd, 8 bits, bggr, binning 1
0x6D8FDBD9360D5C0B,  // ahd, 8 bits, rggb, binning 1
0xEA47AD1AD1F263FF,  // ahd, 8 bits, gbrg, binning 1
0x51812D10CAAC14F7,  // ahd, 8 bits, rggb, binning 2
0x08D32C44ADC88DB9,  // ahd, 8 bits, rggb, binning 3
0x3E63354162D6C693,  // ahd, 8 bits, rggb, binning 4
0x67C6EDDC96E9389A,  // ahd, 10 bits, grbg, binning 1
0xA507BDAB27279D38,  // ahd, 10 bits, bggr, binning 1
0x2820631E9CBC8829,  // ahd, 10 bits, rggb, binning 1
0x2727A19E76671FAC,  // ahd, 10 bits, gbrg, binning 1
0x692682954337CB37,  // ahd, 10 bits, rggb, binning 2
0x84716329FD807685,  // ahd, 10 bits, rggb, binning 3
0x0B5BCD35D2A85297,  // ahd, 10 bits, rggb, binning 4
0x7C12DADD15E82B70,  // ahd, 12 bits, grbg, binning 1
0xB84D2414460D6663,  // ahd, 12 bits, bggr, binning 1
0x6553DEA8157A7490,  // ahd, 12 bits, rggb, binning 1
0xD1C4E770B7ADDAFB,  // ahd, 12 bits, gbrg, binning 1
0x87AB23E2EF7E468B,  // ahd, 12 bits, rggb, binning 2
0xDE879959B802F5B6,  // ahd, 12 bits, rggb, binning 3
0x0087D22089F26D34,  // ahd, 12 bits, rggb, binning 4
0x96AC25E476AB9DA6,  // ahd, 14 bits, grbg, binning 1
0x8C0A5B4593A0F675,  // ahd, 14 bits, bggr, binning 1
0xCC4F8EC29805EC92,  // ahd, 14 bits, rggb, binning 1
0x2B10A0179F4C8684,  // ahd, 14 bits, gbrg, binning 1
0xAF6A89EF3E0A43A8,  // ahd, 14 bits, rggb, binning 2
0x539A1104EC9C5D92,  // ahd, 14 bits, rggb, binning 3
0x9F801A908EDA1EBB,  // ahd, 14 bits, rggb, binning 4
0x6165D7252E74859C,  // ahd, 16 bits, grbg, binning 1
0x878B950912E83AEE,  // ahd, 16 bits, bggr, binning 1
0xA45C1FF8C6A5425B,  // ahd, 16 bits, rggb, binning 1
0x774173D1421312BA,  // ahd, 16 bits, gbrg, binning 1
0x0E2EA0F8411B7287,  // ahd, 16 bits, rggb, binning 2
0x038B170514E8E773,  // ahd, 16 bits, rggb, binning 3
0x285077CCA3C03B97,  // ahd, 16 bits, rggb, binning 4
0xC4068F1AFFF06C6A,  // directional, 8 bits, grbg, binning 1
0xD4AA84D71DFB87AA,  // directional, 8 bits, bggr, binning 1
0x142D0382A13706AE,  // directional, 8 bits, rggb, binning 1
0xAA66EF6289D610DE,  // directional, 8 bits, gbrg, binning 1
0xF33F2A70C52F518D,  // directional, 8 bits, rggb, binning 2
0xF3609206196EE4BE,  // directional, 8 bits, rggb, binning 3
0x8ED97649D3B63DFA,  // directional, 8 bits, rggb, binning 4
0x94460C23834EE4DF,  // directional, 10 bits, grbg, binning 1
0x12FB32A51611B559,  // directional, 10 bits, bggr, binning 1
0x70DD9E573FEECE35,  // directional, 10 bits, rggb, binning 1
0xA330251EFEF18D53,  // directional, 10 bits, gbrg, binning 1
0x8E030FD933C61E8A,  // directional, 10 bits, rggb, binning 2
0x99380A6DF2D9ED82,  // directional, 10 bits, rggb, binning 3
0x6232E71B574F3248,  // directional, 10 bits, rggb, binning 4
0x05C3C3A2F90C5562,  // directional, 12 bits, grbg, binning 1
0x27F49BA29843A8CA,  // directional, 12 bits, bggr, binning 1
0x121ABFD429B1BA32,  // directional, 12 bits, rggb, binning 1
0xDADDA51190292586,  // directional, 12 bits, gbrg, binning 1
0x85306CFCC1838206,  // directional, 12 bits, rggb, binning 2
0x1FEEC5B96CE5C1EB,  // directional, 12 bits, rggb, binning 3
0x226C7B02336BC980,  // directional, 12 bits, rggb, binning 4
0xDA2F09B327057F07,  // directional, 14 bits, grbg, binning 1
0x601ED41B07EE7B64,  // directional, 14 bits, bggr, binning 1
0xE0C6D790D6B88128,  // directional, 14 bits, rggb, binning 1
0x2B11EF8711FB77BF,  // directional, 14 bits, gbrg, binning 1
0xE69F484EA667097F,  // directional, 14 bits, rggb, binning 2
0xE4D70A2D0E004701,  // directional, 14 bits, rggb, binning 3
0x70F7C07A3BC44E7C,  // directional, 14 bits, rggb, binning 4
0xFCBA6B6BEF350133,  // directional, 16 bits, grbg, binning 1
0xF50B4D9A28BBC937,  // directional, 16 bits, bggr, binning 1
0x3D44766C3FE6272B,  // directional, 16 bits, rggb, binning 1
0x1ABA4DFC03BA6793,  // directional, 16 bits, gbrg, binning 1
0xA37F049782964403,  // directional, 16 bits, rggb, binning 2
0x595E29419C42A6D0,  // directional, 16 bits, rggb, binning 3
0x634EE6C1F31F9437,  // directional, 16 bits, rggb, binning 4
0x56A3281F8A10C617,  // mono, 8 bits, mono, binning 1
0x541ADB78C4F91EDD,  // mono, 8 bits, mono, binning 2
0xC21EC873AF79F510,  // mono, 8 bits, mono, binning 3
0x5686DE717B4A6F12,  // mono, 8 bits, mono, binning 4
0xA2ED741D174E9A08,  // mono, 10 bits, mono, binning 1
0x91B878532E2E7650,  // mono, 10 bits, mono, binning 2
0x18AF4D16F5505730,  // mono, 10 bits, mono, binning 3
0x35576BD36D405D29,  // mono, 10 bits, mono, binning 4
0xD05AD46ED04EFDD5,  // mono, 12 bits, mono, binning 1
0x54A68260F2AB5A7A,  // mono, 12 bits, mono, binning 2
0x9FC14D1EEE7FF312,  // mono, 12 bits, mono, binning 3
0x511D58A101D76DF2,  // mono, 12 bits, mono, binning 4
0xD27E018A710E3C12,  // mono, 14 bits, mono, binning 1
0x28C24B1D5422FC9F,  // mono, 14 bits, mono, binning 2
0x093172BD6D552FC9,  // mono, 14 bits, mono, binning 3
0xB5F091573375E53F,  // mono, 14 bits, mono, binning 4
0xE94076B24803A8FA,  // mono, 16 bits, mono, binning 1
0xBC24304FA1500220,  // mono, 16 bits, mono, binning 2
0xCEFC77CA312269FE,  // mono, 16 bits, mono, binning 3
0x71813F4CEBB963F4,  // mono, 16 bits, mono, binning 4
0xDEF2BD2D008E9E89,  // bilinear, 12 bits, grbg, binning 1, lut mode 0
0x56A3281F8A10C617,  // mono, 12 bits, mono, binning 1, lut mode 0
0x08B3515294AA2FDE,  // bilinear, 12 bits, grbg, binning 1, lut mode 1
0x2ECA182AB9EC08B5,  // mono, 12 bits, mono, binning 1, lut mode 1
0x54E02A4622C5D099,  // bilinear, 12 bits, grbg, binning 1, lut mode 2
0x3B2F2DA0EE839DFF,  // mono, 12 bits, mono, binning 1, lut mode 2
0x798C84B227FDF096,  // bilinear, 12 bits, grbg, binning 1, lut mode 3
0xBE77EF7E7A44DCC2,  // mono, 12 bits, mono, binning 1, lut mode 3
0x2DE64BE03113A9FD,  // bilinear, 12 bits, grbg, binning 1, lut mode 4
0xB218C602FE47A67C,  // mono, 12 bits, mono, binning 1, lut mode 4
0x561DC878CB85B092,  // bilinear, 12 bits, grbg, binning 1, lut mode 5
0x223FB767DEF3C4B3,  // mono, 12 bits, mono, binning 1, lut mode 5
0x0FC2C02AC11A5CDD,  // bilinear, 12 bits, grbg, binning 1, lut mode 6
0x16783560913807C3,  // mono, 12 bits, mono, binning 1, lut mode 6
0x54B4FE418E7F63B8,  // bilinear, 12 bits, grbg, binning 1, lut mode 7
0x274E88FB51BE80FC,  // mono, 12 bits, mono, binning 1, lut mode 7
0xDE40E9A7A78A69F5,  // bilinear, 8 bits, bggr, binning 1, finish 1
0xC769B7DE946540B9,  // bilinear, 8 bits, bggr, binning 2, finish 2
0x2955A8D911F0BEF2,  // bilinear, 8 bits, bggr, binning 1, finish 3
0x997EE25F63463F59,  // bilinear, 10 bits, bggr, binning 1, finish 1
0x95E394612D03D13A,  // bilinear, 10 bits, bggr, binning 2, finish 2
0x574D26856756792C,  // bilinear, 10 bits, bggr, binning 1, finish 3
0x6A14FDE4754DF37D,  // bilinear, 12 bits, bggr, binning 1, finish 1
0x28496D8397968649,  // bilinear, 12 bits, bggr, binning 2, finish 2
0x2353B7EB68187A4F,  // bilinear, 12 bits, bggr, binning 1, finish 3
0x89E56C35F8B911B2,  // bilinear, 14 bits, bggr, binning 1, finish 1
0x1F6BDA106A994771,  // bilinear, 14 bits, bggr, binning 2, finish 2
0xDE302DD9A9241293,  // bilinear, 14 bits, bggr, binning 1, finish 3
0xCAE0223DDE04F5F6,  // bilinear, 16 bits, bggr, binning 1, finish 1
0xEEAEE6A31E671904,  // bilinear, 16 bits, bggr, binning 2, finish 2
0x9954DF184C92DFF1,  // bilinear, 16 bits, bggr, binning 1, finish 3
0xB018531228623638,  // ahd, 8 bits, bggr, binning 1, finish 1
0xBE6486DB1E3799A7,  // ahd, 8 bits, bggr, binning 2, finish 2
0x8FA8594D8782422A,  // ahd, 8 bits, bggr, binning 1, finish 3
0x185762C0467B49A2,  // ahd, 10 bits, bggr, binning 1, finish 1
0xFC2F4E4103AA6C33,  // ahd, 10 bits, bggr, binning 2, finish 2
0x378713A7293FF16E,  // ahd, 10 bits, bggr, binning 1, finish 3
0x4AC50BB74A360383,  // ahd, 12 bits, bggr, binning 1, finish 1
0x73E0FFB735996E38,  // ahd, 12 bits, bggr, binning 2, finish 2
0xBC3A9C4E016A90AB,  // ahd, 12 bits, bggr, binning 1, finish 3
0x6E4A2C7D8C5CE821,  // ahd, 14 bits, bggr, binning 1, finish 1
0x911C3E31DDB36B69,  // ahd, 14 bits, bggr, binning 2, finish 2
0x0733F4756DD08C24,  // ahd, 14 bits, bggr, binning 1, finish 3
0xA06686FAFA448959,  // ahd, 16 bits, bggr, binning 1, finish 1
0xBCCD4C64DCC55223,  // ahd, 16 bits, bggr, binning 2, finish 2
0x5601830EF8F95B34,  // ahd, 16 bits, bggr, binning 1, finish 3
0x689B52B22E8FB05E,  // directional, 8 bits, bggr, binning 1, finish 1
0x25F2CD6B7A43C162,  // directional, 8 bits, bggr, binning 2, finish 2
0xA96E4DE7D3D7A440,  // directional, 8 bits, bggr, binning 1, finish 3
0x30CBA4CFD4570C53,  // directional, 10 bits, bggr, binning 1, finish 1
0xB7CFF42A3D8EBAD2,  // directional, 10 bits, bggr, binning 2, finish 2
0x0028207E85B9635D,  // directional, 10 bits, bggr, binning 1, finish 3
0x1290F171E5E6951F,  // directional, 12 bits, bggr, binning 1, finish 1
0x56675E26EE77B7D9,  // directional, 12 bits, bggr, binning 2, finish 2
0x98CCE3887AAE6E94,  // directional, 12 bits, bggr, binning 1, finish 3
0xE4D06DE11561A8C3,  // directional, 14 bits, bggr, binning 1, finish 1
0xCDB5E09C662C5B64,  // directional, 14 bits, bggr, binning 2, finish 2
0xA756FA0167265931,  // directional, 14 bits, bggr, binning 1, finish 3
0xF4B8A763712FF4B1,  // directional, 16 bits, bggr, binning 1, finish 1
0x748DC48C3C0D9010,  // directional, 16 bits, bggr, binning 2, finish 2
0xD4A13B5C4A77DB28,  // directional, 16 bits, bggr, binning 1, finish 3
0x86AEE1C38BE74A6F,  // vng, 8 bits, bggr, binning 1, finish 1
0x3C9DB94F06D6A1F3,  // vng, 8 bits, bggr, binning 2, finish 2
0x2AC1351584DDAA94,  // vng, 8 bits, bggr, binning 1, finish 3
0x0C250D2252E7DF62,  // vng, 10 bits, bggr, binning 1, finish 1
0x45A013EAF9B1F565,  // vng, 10 bits, bggr, binning 2, finish 2
0x8524CB6B65614505,  // vng, 10 bits, bggr, binning 1, finish 3
0x5A126495C2F32A88,  // vng, 12 bits, bggr, binning 1, finish 1
0xBD77389576510A5E,  // vng, 12 bits, bggr, binning 2, finish 2
0xCC86B8008AEF1DEA,  // vng, 12 bits, bggr, binning 1, finish 3
0x0469D5414C4502AF,  // vng, 14 bits, bggr, binning 1, finish 1
0xA75C2986210DDACF,  // vng, 14 bits, bggr, binning 2, finish 2
0xB1722E21FB3498CC,  // vng, 14 bits, bggr, binning 1, finish 3
0xB10A60734AF81559,  // vng, 16 bits, bggr, binning 1, finish 1
0xACEC6A0D84BDD017,  // vng, 16 bits, bggr, binning 2, finish 2
0x30B2341C918F3CB3,  // vng, 16 bits, bggr, binning 1, finish 3
0x2731DDBD2ED6167B,  // mono, 8 bits, mono, binning 1, finish 1
0xD39759F634AF2536,  // mono, 8 bits, mono, binning 2, finish 2
0x6CFE62B9B2E1E79D,  // mono, 8 bits, mono, binning 1, finish 3
0x6412BE00550DB9A4,  // mono, 10 bits, mono, binning 1, finish 1
0x7CB69CDFFFBD3227,  // mono, 10 bits, mono, binning 2, finish 2
0xB92479F528212786,  // mono, 10 bits, mono, binning 1, finish 3
0x38E017006B9BF609,  // mono, 12 bits, mono, binning 1, finish 1
0x2ACF9C8236A3CAAB,  // mono, 12 bits, mono, binning 2, finish 2
0xD26A5E7379B798C6,  // mono, 12 bits, mono, binning 1, finish 3
0xFE71A8101BA05565,  // mono, 14 bits, mono, binning 1, finish 1
0x94EDD066CA59FD4B,  // mono, 14 bits, mono, binning 2, finish 2
0x1EF0F32A54BC48E9,  // mono, 14 bits, mono, binning 1, finish 3
0x306D972B658CAFFF,  // mono, 16 bits, mono, binning 1, finish 1
0xE8D37362E30510F7,  // mono, 16 bits, mono, binning 2, finish 2
0xF2F5B73497BD923B,  // mono, 16 bits, mono, binning 1, finish 3
